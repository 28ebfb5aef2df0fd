// A settings store that holds anything: every reader of it comes through, and what was read is written and
// read again the same. Input: lines "section|key=value".

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Require.h"
#include "engine/process/modOption.h"
#include "engine/profiles/ActiveContainer.h"
#include "engine/profiles/CProfiles.h"
#include "engine/views/MainLayout.h"
#include "engine/views/OptionRules.h"
#include "engine/views/StoredWindow.h"
#include "fake/FakePlatform.h"
#include "platform/Text.h"

namespace {

void Fill(FakeSettings& settings, std::string_view lines) {
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(lines.size(), line.size() + 1));
        const std::size_t bar = line.find('|');
        const std::size_t equals = line.find('=', bar == line.npos ? 0 : bar);
        if (bar == line.npos || equals == line.npos || line.find('\0') != line.npos) continue;
        settings.Set(TextFromAnsi(line.substr(0, bar)), TextFromAnsi(line.substr(bar + 1, equals - bar - 1)),
                     TextFromAnsi(line.substr(equals + 1)));
    }
}

void CheckOptions() {
    Options() = OptionValues();
    LoadOptions();
    const OptionValues read = Options();
    Require(SaveOptions());
    Options() = OptionValues();
    LoadOptions();
    OptionValues again = Options();
    if (read.KeyActivate.size() == 1) Require(again == read);
    OptionControls controls = ControlsFromOptions(again);
    Require(!ConfirmOptions(controls, again) || again.KeyActivate.size() == 1);
}

void CheckWindow() {
    const StoredPlace place = ReadMainPlace();
    Require(place.width >= kMinimumWidthTwips && place.height >= kMinimumHeightTwips);
    StoreMainWindow(ReadMainState(), place);
    StoreSplitterPlace(ReadSplitter(0));
}

std::vector<std::wstring> ListedProfiles() {
    Profiles().LoadRegistry();
    std::vector<std::wstring> listed;
    for (const CProfile* entry : Profiles().NewEnum())
        listed.push_back(entry->Name + L"|" + entry->Directory);
    return listed;
}

void CheckProfiles() {
    const auto listed = ListedProfiles();
    Profiles().SaveRegistry();
    Require(ListedProfiles() == listed);
    Profiles().Clear();

    NodeCollection nodes;
    CTreeViewEx tree;
    tree.Bind(&nodes);
    Node& root = nodes.Add(nullptr, NodeRelation::Last, L"P", {});
    root.SetTag(L"P0");
    ActiveContainer container(tree);
    container.Restore();
    Require(container.Get() == &root);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FakePlatform fake;
    Fill(fake.settings, {reinterpret_cast<const char*>(data), size});
    CheckOptions();
    CheckWindow();
    CheckProfiles();
    return 0;
}
