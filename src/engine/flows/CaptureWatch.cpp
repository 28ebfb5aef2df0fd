#include "engine/flows/CaptureWatch.h"

#include <algorithm>
#include <array>
#include <utility>

#include "engine/process/MayBegin.h"
#include "engine/process/modOption.h"
#include "engine/process/modProt.h"
#include "platform/Platform.h"
#include "platform/Text.h"

using std::chrono::milliseconds;

namespace {

// Together nearly two seconds: whoever holds the clipboard longer holds it from everybody.
constexpr std::array kPausesBetweenReturns = {milliseconds(100), milliseconds(300), milliseconds(600),
                                              milliseconds(900)};

// Longer than a notice of a copy may lie before it is read.
constexpr milliseconds kQuiet(200);
// Somebody may copy without end, and the current may go.
constexpr std::chrono::seconds kLongestBurst(5);

bool ConfirmsConfidential() {
    return ThePlatform().user.Ask(
        L"Der Inhalt der Zwischenablage ist als vertraulich gekennzeichnet.\r\nSoll er trotzdem erfasst "
        L"werden ?",
        L"Vertraulicher Inhalt", true);
}

}  // namespace

using Trigger = SnapFlow::Trigger;
using Outcome = SnapFlow::Outcome;

CaptureWatch::CaptureWatch(MainWindowHost& host, CClipBoard& clipBoard)
    : host_(host),
      snap_(host, clipBoard),
      afterRest_(host,
                 [this] {
                     if (Options().AutoSnap && !missed_) UpdateClipBoard();
                 }),
      whenFree_(host,
                [this] {
                    if (Options().AutoSnap && !missed_) TakeChange();
                }),
      showing_(host, [this] { snap_.Show(Trigger::Change); }),
      quiet_(host, [this] { TellOfCopiesGoneBy(); }) {}

void CaptureWatch::Snap() {
    if (MayBegin(Who::CaptureCommand) != Answer::Now) return;
    missed_ = false;
    const HourglassScope hourglass(ThePlatform().user);
    SnapFlow::Messages messages;
    if (quiet_.IsDue() && !snap_.HasLookedAtThis()) ++seen_;
    Outcome outcome = snap_.Take(Trigger::Command, messages);
    while (outcome == Outcome::Confidential && ConfirmsConfidential())
        outcome = snap_.Take(Trigger::ConfirmedCommand, messages);
    TellAll(messages);
    snap_.Show(Trigger::Command);
}

void CaptureWatch::UpdateClipBoard() {
    const Answer answer = MayBegin(Who::AutomaticCapture);
    missed_ = answer == Answer::Missed;
    if (missed_) return;
    if (host_.LockPressed()) {
        ThePlatform().user.Status(L"Nicht erfasst: Die Erfassung ist gesperrt.");
        return;
    }
    returns_ = silences_ = 0;
    const milliseconds left = rest_.Left(ThePlatform().clock.Now());
    if (answer == Answer::Now && left == milliseconds(0))
        TakeChange();
    else
        afterRest_.PutOff(left);
}

void CaptureWatch::TakeChange() {
    if (snap_.HasLookedAtThis()) return;
    const HourglassScope hourglass(ThePlatform().user);
    const milliseconds before = ThePlatform().clock.OwnWork();
    SnapFlow::Messages messages;
    const Outcome outcome = snap_.Take(Trigger::Change, messages);
    refused_ = outcome == Outcome::Refused;
    rest_.WorkDone(ThePlatform().clock.OwnWork() - before, ThePlatform().clock.Now());
    for (const HeldMessages::Message& message : messages)
        ThePlatform().user.TellLater(message.text);
    if (snap_.HasUnshown()) showing_.PutOff();
    if (outcome == Outcome::Confidential) ThePlatform().user.Status(L"Vertraulicher Inhalt nicht erfasst");
    if (outcome == Outcome::ClipboardBusy)
        ReturnToBusyClipboard();
    else if (outcome == Outcome::OwnerSilent)
        ReturnToSilentOwner();
    else
        ++seen_;
}

void CaptureWatch::CopyTold() {
    if (MayBegin(Who::AutomaticCapture) == Answer::Missed || host_.LockPressed()) return;
    if (!quiet_.IsDue()) firstTold_ = ThePlatform().clock.Now();
    quiet_.PutOff(kQuiet);
    ++told_;
}

bool CaptureWatch::MoreMayFollow() const {
    constexpr FileTime kPerSecond = 10'000'000;
    const FileTime now = ThePlatform().clock.Now();
    return quiet_.IsDue() && now >= firstTold_ && now - firstTold_ < kLongestBurst.count() * kPerSecond;
}

// The notices of copies come in their own time, so nothing can be said before all have come.
void CaptureWatch::TellOfCopiesGoneBy() {
    const int together = told_ + seen_;
    const bool isQuiet = std::exchange(counted_, together) == together;
    if (!isQuiet || afterRest_.IsDue() || whenFree_.IsDue()) return quiet_.PutOff(kQuiet);
    const int goneBy = told_ - seen_;
    told_ = seen_ = counted_ = 0;
    if (goneBy <= 0) return;
    const std::wstring word =
        goneBy == 1 ? L"Eine Kopie ging vorüber" : NumberText(goneBy) + L" Kopien gingen vorüber";
    LogDebug(word);
    ThePlatform().user.Status(word);
}

void CaptureWatch::ReturnToBusyClipboard() {
    if (returns_ == kPausesBetweenReturns.size()) {
        ThePlatform().user.Status(
            L"Eine Kopie wurde nicht erfasst: Ein anderes Programm gibt die Zwischenablage nicht frei.");
        ++seen_;
    } else if (!whenFree_.IsDue()) {
        whenFree_.PutOff(kPausesBetweenReturns[returns_++]);
    }
}

// However long it takes him: what he copied stays where it is, and nobody is kept from it.
void CaptureWatch::ReturnToSilentOwner() {
    const std::size_t last = kPausesBetweenReturns.size() - 1;
    if (silences_++ == last)
        ThePlatform().user.Status(L"Eine Kopie wartet: Das Programm, das kopiert hat, antwortet nicht.");
    whenFree_.PutOff(kPausesBetweenReturns[std::min(silences_ - 1, last)]);
}

void CaptureWatch::OfferMissed() {
    if (missed_ && !Is(Busy::Dialog) && Options().AutoSnap)
        ThePlatform().user.Status(L"Während des Dialogs wurde kopiert: F5 erfasst es.");
}

void CaptureWatch::ReturnToRefused() {
    if (std::exchange(refused_, false) && Options().AutoSnap) UpdateClipBoard();
}

bool CaptureWatch::TakeMissed() {
    if (!std::exchange(missed_, false)) return false;
    Snap();
    return true;
}
