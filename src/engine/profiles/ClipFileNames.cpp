#include "engine/profiles/ClipFileNames.h"

#include "platform/Text.h"

std::int32_t ClipNumberInName(const std::wstring& name) {
    const std::wstring upper = UpperCase(name);
    if (!upper.starts_with(L"C") || !upper.ends_with(L".NXC")) return 0;
    const std::int32_t number = ParseInt32(upper.substr(1, upper.size() - 5)).value_or(0);
    return number > 0 && upper == L"C" + NumberText(number) + L".NXC" ? number : 0;
}

bool IsHalfCopyName(const std::wstring& name) {
    const std::size_t mark = name.rfind(L".~");
    if (mark == std::wstring::npos || !ParseInt32(name.substr(mark + 2))) return false;
    const std::wstring target = name.substr(0, mark);
    return ClipNumberInName(target) != 0 || UpperCase(target).starts_with(L"NXCLIP");
}
