#pragma once

#include <chrono>
#include <cstddef>
#include <optional>

#include "engine/flows/MainWindowHost.h"
#include "engine/flows/RestAfterWork.h"
#include "engine/flows/SnapFlow.h"

// When a snap is taken. What it takes: SnapFlow.
class CaptureWatch {
 public:
    // Neither is owned; both live as long as the watch.
    CaptureWatch(MainWindowHost& host, CClipBoard& clipBoard);

    // The clipboard changed. Takes what it holds now, unless a snap has looked at it before. Of changes that
    // come faster than the user could bear only the newest is taken. While another program holds the
    // clipboard, comes back a few times within two seconds; then the status bar says that a copy was missed.
    // While its owner takes no messages, comes back until he does.
    void UpdateClipBoard();
    // Another program has copied, as told once for each copy. Those that no snap has seen when all is quiet
    // again have gone by, and the status bar says so.
    void CopyTold();
    // A copy came just now, and others may follow: what would keep us from taking them is put off, a few
    // seconds at most.
    bool MoreMayFollow() const;
    // Takes a snap at the user's command, of confidential content after a question.
    void Snap();

    // Tells of a copy that came while a dialog was open, once that has closed.
    void OfferMissed();
    // Takes it at the user's command. False when there is none.
    bool TakeMissed();
    // The container's profile can be changed again: takes the copy that was refused for that, if it is still
    // on the clipboard.
    void ReturnToRefused();
    // The missed copy is not on the clipboard any more.
    void ForgetMissed() { missed_ = false; }

    // The window goes while a clip is being made: it ends without one.
    void Abandon() { snap_.Abandon(); }
    // When a snap last looked at the clipboard; none before the first.
    std::optional<FileTime> LastUpdate() const { return snap_.LastUpdate(); }

 private:
    void TakeChange();
    void ReturnToBusyClipboard();
    void ReturnToSilentOwner();
    void TellOfCopiesGoneBy();

    MainWindowHost& host_;
    SnapFlow snap_;
    // A few refreshes of the screen, and less than the time between two copies by hand.
    RestAfterWork rest_{std::chrono::milliseconds(20), std::chrono::milliseconds(250)};
    bool missed_ = false;   // a copy came while a dialog was open, and none after it
    bool refused_ = false;  // the newest copy, since another program had the container's profile
    // How often the newest change was tried again because another program had the clipboard.
    std::size_t returns_ = 0;
    // The same because its owner took no messages.
    std::size_t silences_ = 0;
    Once afterRest_;
    Once whenFree_;
    Once showing_;
    // Copies since all was quiet last.
    int told_ = 0, seen_ = 0;
    int counted_ = 0;  // both together, when they were looked at last
    FileTime firstTold_ = 0;
    Once quiet_;
};
