#include "engine/process/modHelp.h"

#include <utility>

#include "engine/process/modMain.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"

std::wstring HelpFile;
std::wstring HelpPageDirectory;

namespace {

HelpPages* helpPages = nullptr;

// Whether the viewer took the help file.
bool OpenInViewer(WindowHandle window, std::uint32_t command, std::uintptr_t data) {
    if (helpPages != nullptr && !helpPages->ViewerWorks()) return false;
    return FileExists(HelpFile) && ThePlatform().windows.OpenHelp(window, HelpFile, command, data);
}

std::wstring PageFor(std::uint32_t command, std::uintptr_t data) {
    if (command == kHelpFinder) return L"stichwoerter";
    const auto contents = static_cast<std::uintptr_t>(HelpTopic::Contents);
    return HelpPageOf(command == kHelpContext ? data : contents);
}

bool OpenAsPage(std::uint32_t command, std::uintptr_t data) {
    if (helpPages == nullptr) return false;
    const std::wstring page = HelpPageDirectory + PageFor(command, data) + L".html";
    return FileExists(page) && helpPages->OpenPage(page);
}

}  // namespace

HelpPages* UseHelpPages(HelpPages* pages) {
    return std::exchange(helpPages, pages);
}

void ShowHelp(WindowHandle window, HelpTopic topic) {
    ShowHelpCommand(window, kHelpContext, static_cast<std::uintptr_t>(topic));
}

void ShowHelpCommand(WindowHandle window, std::uint32_t command, std::uintptr_t data) {
    if (HelpFile.empty()) {
        ThePlatform().user.Tell(L"Es wurde keine Hilfedatei in diesem Projekt festgelegt.", AppName,
                                MessageIcon::Information);
        return;
    }
    if (OpenInViewer(window, command, data) || OpenAsPage(command, data)) return;
    ThePlatform().user.Tell(FileErrorOf(kErrorFileNotFound, HelpFile).Description());
}

std::wstring HelpPageOf(std::uintptr_t number) {
    switch (number) {
        default:
#define NXCLIP_HELP_TOPIC(name, topicNumber, page) \
    case topicNumber:                              \
        return L##page;
            NXCLIP_HELP_TOPICS
#undef NXCLIP_HELP_TOPIC
    }
}
