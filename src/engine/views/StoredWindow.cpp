#include "engine/views/StoredWindow.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cwchar>
#include <iterator>
#include <string>
#include <vector>

#include "engine/views/MainLayout.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kSection = L"Settings";
// No monitor is that far away; a number beyond it is damage.
constexpr double kFarthestTwips = 1e6;

// The values that make the window's place together, in the order in which they stand in the change.
enum PlaceValue : std::size_t { Left, Top, Width, Height, State };
constexpr std::array kPlaceKeys{L"MainLeft", L"MainTop", L"MainWidth", L"MainHeight", L"MainState"};
// A place whose values are being written, whole in one value: that alone is written in one piece. While it is
// there it is the place, so that a window of one width and another height never comes back.
constexpr const wchar_t* kChangeKey = L"MainChange";

std::wstring Stored(const wchar_t* key) {
    return ThePlatform().settings.Read(kSection, key, L"");
}

std::vector<std::wstring> PartsOf(const std::wstring& text) {
    std::vector<std::wstring> parts;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L',', begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

std::wstring TextOf(const std::vector<std::wstring>& parts) {
    std::wstring text;
    for (const std::wstring& part : parts)
        text += (text.empty() ? L"" : L",") + part;
    return text;
}

std::vector<std::wstring> StoredPlaceTexts() {
    std::vector<std::wstring> texts = PartsOf(Stored(kChangeKey));
    if (texts.size() == kPlaceKeys.size()) return texts;
    texts.assign(kPlaceKeys.size(), {});
    std::transform(kPlaceKeys.begin(), kPlaceKeys.end(), texts.begin(), &Stored);
    return texts;
}

double NumberOf(const std::wstring& text, double absent) {
    wchar_t* end = nullptr;
    const double number = std::wcstod(text.c_str(), &end);
    return end != text.c_str() && std::abs(number) < kFarthestTwips ? number : absent;
}

double StoredNumber(const wchar_t* key, double absent) {
    return NumberOf(Stored(key), absent);
}

bool StoreText(const wchar_t* key, const std::wstring& text) {
    return Stored(key) == text || ThePlatform().settings.Write(kSection, key, text);
}

bool StoreNumber(const wchar_t* key, double number) {
    return StoreText(key, NumberText(std::llround(number)));
}

bool StoredFlag(const wchar_t* key, bool absent) {
    return StoredNumber(key, absent ? 1 : 0) != 0;
}

}  // namespace

MainState ReadMainState() {
    const double number = NumberOf(StoredPlaceTexts()[State], 0);
    if (number == 1) return MainState::Minimised;
    if (number == 2) return MainState::Maximised;
    return MainState::Normal;
}

StoredPlace ReadMainPlace() {
    const std::vector<std::wstring> texts = StoredPlaceTexts();
    StoredPlace place;
    place.known = !texts[Width].empty() || !texts[Height].empty();
    place.left = NumberOf(texts[Left], place.left);
    place.top = NumberOf(texts[Top], place.top);
    place.width = std::max(NumberOf(texts[Width], place.width), kMinimumWidthTwips);
    place.height = std::max(NumberOf(texts[Height], place.height), kMinimumHeightTwips);
    return place;
}

double ReadSplitter(double absent) {
    return StoredNumber(L"Splitter", absent);
}

void StoreMainWindow(MainState state, const StoredPlace& place) {
    std::vector<std::wstring> texts;
    for (const double number : {place.left, place.top, place.width, place.height, static_cast<double>(state)})
        texts.push_back(NumberText(std::llround(number)));
    if (StoredPlaceTexts() != texts && !StoreText(kChangeKey, TextOf(texts))) return;
    if (Stored(kChangeKey).empty()) return;
    bool whole = true;
    for (std::size_t i = 0; i < kPlaceKeys.size(); ++i)
        whole = StoreText(kPlaceKeys[i], texts[i]) && whole;
    if (whole) ThePlatform().settings.DeleteValue(kSection, kChangeKey);
}

void StoreSplitterPlace(double left) {
    StoreNumber(L"Splitter", left);
}

StoredView ReadView() {
    StoredView view;
    view.toolBar = StoredFlag(L"ViewToolbar", view.toolBar);
    view.statusBar = StoredFlag(L"ViewStatusBar", view.statusBar);
    view.preview = StoredFlag(L"ViewPreview", view.preview);
    view.stretch = StoredFlag(L"ViewStretch", view.stretch);
    const double mode = StoredNumber(L"ViewMode", view.listMode);
    if (mode == 0 || mode == 1 || mode == 2) view.listMode = static_cast<int>(mode);
    const double column = StoredNumber(L"ViewSort", view.sortColumn);
    constexpr double kLastColumn = 5;
    if (column >= 0 && column <= kLastColumn) view.sortColumn = static_cast<int>(column);
    view.sortDescending = view.sortColumn >= 0 && StoredFlag(L"ViewSortDown", view.sortDescending);
    return view;
}

void StoreView(const StoredView& view) {
    StoreNumber(L"ViewToolbar", view.toolBar);
    StoreNumber(L"ViewStatusBar", view.statusBar);
    StoreNumber(L"ViewPreview", view.preview);
    StoreNumber(L"ViewStretch", view.stretch);
    StoreNumber(L"ViewMode", view.listMode);
    StoreNumber(L"ViewSort", view.sortColumn);
    StoreNumber(L"ViewSortDown", view.sortDescending);
}

std::vector<int> ReadColumnWidths(const std::wstring& firstHeading) {
    constexpr int kWidestTwips = 100'000;
    std::vector<int> widths;
    for (const std::wstring& part : PartsOf(Stored((L"Columns" + firstHeading).c_str()))) {
        const int width = ParseInt32(part).value_or(-1);
        if (width < 0 || width > kWidestTwips) return {};
        widths.push_back(width);
    }
    return widths;
}

void StoreColumnWidths(const std::wstring& firstHeading, const std::vector<int>& widths) {
    std::vector<std::wstring> parts;
    std::transform(widths.begin(), widths.end(), std::back_inserter(parts),
                   [](int width) { return NumberText(width); });
    ThePlatform().settings.Write(kSection, L"Columns" + firstHeading, TextOf(parts));
}
