#include "engine/flows/CaptureWatch.h"

#include <array>
#include <utility>

#include "engine/process/MayBegin.h"
#include "engine/process/modOption.h"
#include "platform/Platform.h"

using std::chrono::milliseconds;

namespace {

// Together nearly two seconds: whoever holds the clipboard longer holds it from everybody.
constexpr std::array kPausesBetweenReturns = {milliseconds(100), milliseconds(300), milliseconds(600),
                                              milliseconds(900)};

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
                     if (Options().AutoSnap) UpdateClipBoard();
                 }),
      whenFree_(host,
                [this] {
                    if (Options().AutoSnap) TakeChange();
                }),
      showing_(host, [this] { snap_.Show(Trigger::Change); }) {}

void CaptureWatch::Snap() {
    if (MayBegin(Who::CaptureCommand) != Answer::Now) return;
    missed_ = false;
    const HourglassScope hourglass(ThePlatform().user);
    SnapFlow::Messages messages;
    if (snap_.Take(Trigger::Command, messages) == Outcome::Confidential && ConfirmsConfidential())
        snap_.Take(Trigger::ConfirmedCommand, messages);
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
    returns_ = 0;
    const milliseconds left = rest_.Left(ThePlatform().clock.Now());
    if (answer == Answer::Now && left == milliseconds(0))
        TakeChange();
    else
        afterRest_.PutOff(left);
}

void CaptureWatch::TakeChange() {
    if (snap_.HasLookedAtThis()) return;
    const HourglassScope hourglass(ThePlatform().user);
    const FileTime began = ThePlatform().clock.Now();
    SnapFlow::Messages messages;
    const Outcome outcome = snap_.Take(Trigger::Change, messages);
    refused_ = outcome == Outcome::Refused;
    rest_.WorkDone(began, ThePlatform().clock.Now());
    for (const HeldMessages::Message& message : messages)
        ThePlatform().user.TellLater(message.text);
    if (snap_.HasUnshown()) showing_.PutOff();
    if (outcome == Outcome::Confidential) ThePlatform().user.Status(L"Vertraulicher Inhalt nicht erfasst");
    if (outcome == Outcome::ClipboardBusy) ReturnToBusyClipboard();
}

void CaptureWatch::ReturnToBusyClipboard() {
    if (returns_ == kPausesBetweenReturns.size())
        ThePlatform().user.Status(
            L"Eine Kopie wurde nicht erfasst: Ein anderes Programm gibt die Zwischenablage nicht frei.");
    else if (!whenFree_.IsDue())
        whenFree_.PutOff(kPausesBetweenReturns[returns_++]);
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
