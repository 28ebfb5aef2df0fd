#include "commandline/ImportCommand.h"

#include "commandline/OpenedProfile.h"
#include "engine/flows/Import.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/tree/modTreeEx.h"

int RunImport(const CommandContext& context) {
    const std::wstring to = context.arguments.Of(L"--to");
    if (to.empty()) throw CommandError{L"Es fehlt --to mit dem Ordner."};
    OpenedProfile profile(context.arguments.Of(L"--directory", kCurrentDirectory),
                          OpenedProfile::kForWriting);
    Node& container = profile.Find(to, OpenedProfile::Wanted::Container);
    if (IsClipNode(&container)) throw CommandError{L"Das ist kein Ordner: " + container.FullPath()};
    std::size_t failed = 0;
    for (const std::wstring& file : context.arguments.Values()) {
        std::wstring why;
        const Node* const clip =
            ImportFile(*profile.Tree().TreeView(), container, context.console.FullPath(file), why);
        if (clip != nullptr)
            context.console.Write(clip->FullPath() + L"\n");
        else if (!why.empty())
            context.console.WriteError(why + L"\n");
        failed += clip == nullptr ? 1 : 0;
    }
    // Not for a counter that went on alone.
    if (failed == context.arguments.Values().size()) return 1;
    const bool saved = SaveAllProfiles(profile.Tree());
    FinishSaves();
    return saved && failed == 0 ? 0 : 1;
}
