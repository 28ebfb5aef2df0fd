#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/clipboard/CClipBoard.h"
#include "engine/flows/MainWindowHost.h"
#include "engine/flows/NewClipFile.h"
#include "engine/tree/NodeRef.h"
#include "platform/Files.h"
#include "platform/HeldMessages.h"

// A snap: what is on the clipboard becomes a clip on disk and a node below the active container. The
// clipboard is open for reading alone, and no message box opens before the clip is made and saved.
//
// A snap that a clipboard change asked for happens inside that change's message, while other viewers wait.
// What is only for the user's eyes, and every text, comes later from a message of its own. When one is taken,
// and when it is shown, CaptureWatch knows.
class SnapFlow {
 public:
    // Neither is owned; both live as long as the flow.
    SnapFlow(MainWindowHost& host, CClipBoard& clipBoard) : host_(host), clipBoard_(clipBoard) {}

    enum class Trigger { Command, ConfirmedCommand, Change };
    // OwnerSilent: who copied takes no messages now. Refused: another program has the container's profile.
    enum class Outcome { Finished, ClipboardBusy, OwnerSilent, Confidential, Refused };
    using Messages = std::vector<HeldMessages::Message>;

    // Makes a clip of what the clipboard holds now. What the user is to be told comes in `messages`. Of
    // confidential content only a confirmed command makes one.
    Outcome Take(Trigger trigger, Messages& messages);
    // A snap has looked at this content of the clipboard before.
    bool HasLookedAtThis() const;

    // A clip was made and is not shown yet.
    bool HasUnshown() const { return unshown_.Get() != nullptr; }
    // Shows the newest of them, with all that the user wants to see and hear of it.
    void Show(Trigger trigger);

    // The window goes while a clip is being made: it ends without one.
    void Abandon() { abandoned_ = true; }

    // When a snap last looked at the clipboard; none before the first.
    std::optional<FileTime> LastUpdate() const { return lastUpdate_; }

 private:
    struct Choice;
    struct Content;

    Outcome TakeSnap(Trigger trigger);
    Outcome ReadClipboard(Trigger trigger, const NewClipFile& file, std::optional<Content>& content);
    std::optional<Choice> ChooseFormats(const CFormats& formats);
    Content SaveFormats(CFormats& formats, const Choice& choice, FileHandle file);
    bool IsTakenAlready(const NewClipFile& file, const Content& content);
    Node* MakeNode(const NewClipFile& file, const Content& content);
    void SelectQuietly(Node& clip);

    MainWindowHost& host_;
    CClipBoard& clipBoard_;
    std::optional<FileTime> lastUpdate_;
    bool abandoned_ = false;
    // The clipboard's sequence number when a snap last looked at it; 0 for none.
    std::uint32_t lookedAt_ = 0;
    // The clip that was made and not shown yet, and what the status bar is to say of it; empty when all is
    // well.
    NodeRef unshown_;
    std::wstring lastWord_;
};

// A clip's name made of its text: up to the first zero, each run of line breaks and other control characters
// as one blank, none at the ends, and no longer than the options dialog lets the user ask for. Empty when
// nothing readable is left: the clip keeps its format set's name then.
std::wstring ClipNameOfText(const std::wstring& text);
