#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "engine/clipboard/CClipBoard.h"
#include "engine/flows/MainWindowHost.h"
#include "platform/Files.h"

// A snap: what is on the clipboard becomes a clip on disk and a node below the active container.
class SnapFlow {
 public:
    // Neither is owned; both live as long as the flow.
    SnapFlow(MainWindowHost& host, CClipBoard& clipBoard) : host_(host), clipBoard_(clipBoard) {}

    // The clipboard changed. Takes a snap unless a modal dialog is open.
    void UpdateClipBoard();
    // Takes a snap; everything it has to say it says in the user interface. While one runs, a further call
    // does nothing: the messages that a snap shows let new clipboard changes in.
    void Snap();

    // When a snap last looked at the clipboard; none before the first.
    std::optional<FileTime> LastUpdate() const { return lastUpdate_; }

 private:
    struct ClipFile {
        std::wstring path;
        std::int32_t number = 0;
    };
    struct Choice;
    struct Saved;

    void TakeSnap();
    ClipFile NewClipFile(Node& container);
    std::optional<Choice> ChooseFormats(const CFormats& formats);
    Saved SaveFormats(CFormats& formats, const Choice& choice, FileHandle file, Node& node);
    void TagNode(Node& node, const ClipFile& clip, std::int16_t formatCount);
    void SayWhatIsMissing(const Saved& saved, const std::wstring& path);

    MainWindowHost& host_;
    CClipBoard& clipBoard_;
    std::optional<FileTime> lastUpdate_;
    bool running_ = false;
};

// A clip's name made of its text: up to the first zero, each run of line breaks and other control characters
// as one blank, none at the ends, and no longer than the options dialog lets the user ask for. Empty when
// nothing readable is left: the clip keeps its format set's name then.
std::wstring ClipNameOfText(const std::wstring& text);
