#include "engine/process/MayBegin.h"

#include <algorithm>
#include <array>

namespace {

using enum Answer;

struct Row {
    Who who;
    std::array<Answer, kBusyCount> answers;  // by Busy
};

constexpr std::array<Row, kWhoCount> kRows{{
    //                       dialog   menu    drag     rename  operation capture  end
    {Who::AutomaticCapture, {Missed, Later, Later, Later, Later, Later, Later}},
    {Who::CaptureCommand, {Refused, Now, Refused, EndsIt, Refused, Refused, Refused}},
    {Who::ClipCommand, {Refused, Now, Refused, EndsIt, Refused, Refused, Refused}},
    {Who::TreeCommand, {Refused, Now, Refused, EndsIt, Refused, Refused, Refused}},
    {Who::TypedName, {Later, Later, Later, Now, Later, Later, Later}},
    {Who::BoxToldLater, {Now, Later, Later, Later, Later, Later, Later}},
    {Who::PutOffAction, {Later, Later, Later, Later, Later, Later, Later}},
    {Who::Closing, {Refused, EndsIt, EndsIt, EndsIt, Later, Later, Later}},
    {Who::SessionEnd, {Now, EndsIt, EndsIt, EndsIt, Now, EndsIt, Now}},
    {Who::SecondStart, {Now, Now, Now, Now, Now, Now, Now}},
    {Who::HotKey, {Now, Now, Now, Now, Now, Now, Now}},
}};

constexpr bool InOrder() {
    for (int i = 0; i < kWhoCount; ++i)
        if (kRows[static_cast<std::size_t>(i)].who != static_cast<Who>(i)) return false;
    return true;
}
static_assert(InOrder());

}  // namespace

Answer MayBegin(Who who) noexcept {
    const Row& row = kRows[static_cast<std::size_t>(who)];
    Answer answer = Now;
    for (int busy = 0; busy < kBusyCount; ++busy)
        if (Is(static_cast<Busy>(busy)))
            answer = std::max(answer, row.answers[static_cast<std::size_t>(busy)]);
    return answer;
}
