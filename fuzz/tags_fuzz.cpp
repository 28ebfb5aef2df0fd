// Both tag parsers on any text: whatever they read must come back when it is made into a tag again.

#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>

#include "Require.h"
#include "engine/tree/modTreeEx.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

using ProfileFields = std::tuple<std::int32_t, std::wstring, bool, std::wstring>;
using ClipFields = std::tuple<std::int32_t, std::int16_t, std::wstring, std::wstring>;

// The error's number, 0 when there was none.
template <typename Parser, typename... Fields>
int ErrorOf(Parser parse, const std::wstring& tag, std::tuple<Fields...>& fields) {
    try {
        std::apply([&](Fields&... each) { parse(tag, each...); }, fields);
        return 0;
    } catch (const RuntimeError& error) {
        return error.Number();
    }
}

void CheckProfile(const std::wstring& tag) {
    ProfileFields fields(-1, L"unset", true, L"unset");
    const int error = ErrorOf(ParseProfileTag, tag, fields);
    Require(error == 0 || error == static_cast<int>(ErrorNumber::TypeMismatch));
    if (error != 0) return;
    ProfileFields again;
    Require(ErrorOf(ParseProfileTag, std::apply(MakeProfileTag, fields), again) == 0 && again == fields);
}

void CheckClip(const std::wstring& tag) {
    ClipFields fields(-1, std::int16_t{-1}, L"unset", L"unset");
    const int error = ErrorOf(ParseClipTag, tag, fields);
    const bool noField = !tag.empty() && tag.find(L'&', 2) == std::wstring::npos;
    Require((error == static_cast<int>(ErrorNumber::InvalidArgument)) == noField);
    Require(noField || error == 0 || error == static_cast<int>(ErrorNumber::TypeMismatch));
    if (error != 0) return;
    ClipFields again;
    Require(ErrorOf(ParseClipTag, std::apply(MakeClipTag, fields), again) == 0 && again == fields);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring tag = TextFromAnsi(std::string_view(reinterpret_cast<const char*>(data), size));
    CheckProfile(tag);
    CheckClip(tag);
    Require(ParseStructureTag(MakeStructureTag(tag)) == tag);
    return 0;
}
