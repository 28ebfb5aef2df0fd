#include "engine/views/StoredWindow.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <string>

#include "engine/views/MainLayout.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kSection = L"Settings";
// No monitor is that far away; a number beyond it is damage.
constexpr double kFarthestTwips = 1e6;

bool IsStored(const wchar_t* key) {
    return !ThePlatform().settings.Read(kSection, key, L"").empty();
}

double StoredNumber(const wchar_t* key, double absent) {
    const std::wstring text = ThePlatform().settings.Read(kSection, key, L"");
    wchar_t* end = nullptr;
    const double number = std::wcstod(text.c_str(), &end);
    return end != text.c_str() && std::abs(number) < kFarthestTwips ? number : absent;
}

void StoreNumber(const wchar_t* key, double number) {
    SettingsPort& settings = ThePlatform().settings;
    const std::wstring text = NumberText(std::llround(number));
    if (settings.Read(kSection, key, L"") != text) settings.Write(kSection, key, text);
}

bool StoredFlag(const wchar_t* key, bool absent) {
    return StoredNumber(key, absent ? 1 : 0) != 0;
}

}  // namespace

MainState ReadMainState() {
    const double number = StoredNumber(L"MainState", 0);
    if (number == 1) return MainState::Minimised;
    if (number == 2) return MainState::Maximised;
    return MainState::Normal;
}

StoredPlace ReadMainPlace() {
    StoredPlace place;
    place.known = IsStored(L"MainWidth") || IsStored(L"MainHeight");
    place.left = StoredNumber(L"MainLeft", place.left);
    place.top = StoredNumber(L"MainTop", place.top);
    place.width = std::max(StoredNumber(L"MainWidth", place.width), kMinimumWidthTwips);
    place.height = std::max(StoredNumber(L"MainHeight", place.height), kMinimumHeightTwips);
    return place;
}

double ReadSplitter(double absent) {
    return StoredNumber(L"Splitter", absent);
}

void StoreMainWindow(MainState state, const StoredPlace& place) {
    StoreNumber(L"MainLeft", place.left);
    StoreNumber(L"MainTop", place.top);
    StoreNumber(L"MainWidth", place.width);
    StoreNumber(L"MainHeight", place.height);
    StoreNumber(L"MainState", static_cast<int>(state));
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
    const std::wstring text = ThePlatform().settings.Read(kSection, L"Columns" + firstHeading, L"");
    std::vector<int> widths;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L',', begin), text.size());
        const int width = ParseInt32(text.substr(begin, end - begin)).value_or(-1);
        if (width < 0 || width > kWidestTwips) return {};
        widths.push_back(width);
        begin = end + 1;
    }
    return widths;
}

void StoreColumnWidths(const std::wstring& firstHeading, const std::vector<int>& widths) {
    std::wstring text;
    for (const int width : widths)
        text += (text.empty() ? L"" : L",") + NumberText(width);
    ThePlatform().settings.Write(kSection, L"Columns" + firstHeading, text);
}
