#include "engine/clipboard/OwnerRequests.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <string_view>

#include "engine/clipboard/FormatNames.h"
#include "platform/Platform.h"

using std::chrono::milliseconds;

namespace {

// A refusal takes no longer; whoever gives nothing after this time was waited for in vain.
constexpr milliseconds kAtOnce(300);
// One format that took so long and came to nothing is enough.
constexpr milliseconds kMostInVain(3000);
// Each fails after a fifth of a second, or at once; all of them together take as long as one format in vain.
constexpr int kMostProbes = 15;
constexpr milliseconds kMoment(20);
constexpr milliseconds kMostTogether(10000);

enum class Answer {
    Given,
    Refused,
    Late,     // nothing came in the time that the system waits
    Unasked,  // the owner takes no messages, or has had his time
};

// How much work a format usually is for its owner.
enum class Cost { Text, Data, Picture, Object };

Cost CostOf(const CFormat& format) {
    switch (format.FormatId) {
        case kTextFormat:
        case kOemTextFormat:
        case kUnicodeFormat:
        case kLocaleFormat:
            return Cost::Text;
        case kMetafilePictureFormat:
        case kTiffFormat:
        case kDibFormat:
        case kEnhancedMetafileFormat:
        case kDibV5Format:
            return Cost::Picture;
        default:
            break;
    }
    const std::wstring& name = format.FormatName;
    const auto names = [&](const auto&... parts) {
        return ((name.find(parts) != std::wstring::npos) || ...);
    };
    if (names(L"Embed", L"Link Source", L"Native")) return Cost::Object;
    if (names(L"PNG", L"JFIF", L"GIF", L"image/", L"Metafile", L"Bitmap")) return Cost::Picture;
    return names(L"Text", L"HTML", L"Csv") ? Cost::Text : Cost::Data;
}

class Requests {
 public:
    Answer Ask(CFormat& format) {
        const FileTime began = ThePlatform().clock.Now();
        hadHisTime_ = hadHisTime_ || together_ >= kMostTogether || !OwnerTakesMessages(began);
        if (hadHisTime_) return Answer::Unasked;
        format.Delivered = ThePlatform().clipboard.Data(format.FormatId);
        const milliseconds took = Since(began);
        together_ += took;
        if (*format.Delivered != DataHandle::None) return Answer::Given;
        hadHisTime_ = took > kMostInVain;
        return took > kAtOnce ? Answer::Late : Answer::Refused;
    }

 private:
    // A request to one that does not would hold the clipboard for half a minute, or for ever. Each of these
    // questions is a way to his program and back; who has answered a moment ago takes messages still.
    bool OwnerTakesMessages(FileTime now) {
        if (answered_ && now >= *answered_ && Since(*answered_) < kMoment) return true;
        for (int probes = 0; probes < kMostProbes; ++probes) {
            if (OwnerAnswers()) {
                answered_ = ThePlatform().clock.Now();
                return true;
            }
            // Who took long with the last format counts as hung until he looks for his next message.
            if (ThePlatform().windows.Hangs(ThePlatform().clipboard.Owner()))
                ThePlatform().clock.Pause(kMoment);
        }
        return false;
    }
    static milliseconds Since(FileTime began) {
        constexpr FileTime kPerMillisecond = 10'000;
        const FileTime now = ThePlatform().clock.Now();
        return milliseconds(now > began ? (now - began) / kPerMillisecond : 0);
    }

    std::optional<FileTime> answered_;  // when he took a message last
    milliseconds together_{0};
    bool hadHisTime_ = false;
};

}  // namespace

bool OwnerAnswers() {
    const WindowHandle owner = ThePlatform().clipboard.Owner();
    return owner == WindowHandle::None || ThePlatform().windows.Answers(owner);
}

std::vector<std::wstring> RequestData(const std::vector<CFormat*>& formats) {
    struct Request {
        CFormat* format;
        Answer answer = Answer::Unasked;
    };
    std::vector<Request> requests;
    for (CFormat* const format : formats)
        requests.push_back({format});
    std::vector<Request*> cheapFirst;
    for (Request& request : requests) {
        request.format->Delivered = DataHandle::None;
        if (!IsGdiObjectFormat(request.format->FormatId)) cheapFirst.push_back(&request);
    }
    std::stable_sort(cheapFirst.begin(), cheapFirst.end(), [](const Request* a, const Request* b) {
        return CostOf(*a->format) < CostOf(*b->format);
    });

    Requests owner;
    for (Request* request : cheapFirst)
        request->answer = owner.Ask(*request->format);
    for (Request* request : cheapFirst)
        if (request->answer == Answer::Late) request->answer = owner.Ask(*request->format);

    std::vector<std::wstring> owed;
    for (const Request& request : requests) {
        const bool data = !IsGdiObjectFormat(request.format->FormatId);
        if (data && (request.answer == Answer::Late || request.answer == Answer::Unasked))
            owed.push_back(request.format->FormatName);
    }
    return owed;
}
