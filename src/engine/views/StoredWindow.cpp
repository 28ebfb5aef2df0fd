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
