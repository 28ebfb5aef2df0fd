// Puts content on the clipboard as any other program would, and stays as its owner.
//
//   clipput [--delayed] FORMAT=FILE...    puts one format after the other; prints "ready" when all are there.
//                                         Without a format it only empties the clipboard.
//   clipput --quit                        ends every clipput that stays, and waits until they have gone
//
// FORMAT is a standard format's number or a registered format's name, FILE holds its bytes as ClipboardData.h
// describes them. With --delayed the formats are only announced, and each is made when somebody asks for it;
// then "rendered <format>" is printed. What is still only announced when the program is told to end is made
// then.

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <vector>

#include "desktop/ClipboardData.h"
#include "desktop/Utf8.h"
#include "desktop/WholeFile.h"

namespace {

constexpr wchar_t kClassName[] = L"NXClip.ClipPut";
constexpr DWORD kQuitBound = 10000;

struct Offer {
    std::wstring formatText;
    UINT format = 0;
    std::string bytes;
};

std::vector<Offer> offers;
bool delayed = false;

void Say(const std::string& text) {
    std::printf("%s\n", text.c_str());
    std::fflush(stdout);
}

void Put(const Offer& offer) {
    HANDLE data = MakeClipboardData(offer.format, offer.bytes);
    if (data == nullptr || SetClipboardData(offer.format, data) == nullptr) {
        Say("cannot put " + Utf8(offer.formatText) + ", error " + std::to_string(GetLastError()));
    }
}

void Render(UINT format) {
    for (const Offer& offer : offers) {
        if (offer.format != format) continue;
        Put(offer);
        Say("rendered " + Utf8(offer.formatText));
    }
}

void RenderAll(HWND window) {
    const OpenedClipboard clipboard(window);
    // Somebody else may own the clipboard by now.
    if (GetClipboardOwner() != window) return;
    for (const Offer& offer : offers)
        Put(offer);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_RENDERFORMAT:
            Render(static_cast<UINT>(wParam));
            return 0;
        case WM_RENDERALLFORMATS:
            RenderAll(window);
            return 0;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

HWND MakeOwner() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClassName;
    RegisterClassW(&windowClass);
    return CreateWindowExW(0, kClassName, L"clipput", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                           windowClass.hInstance, nullptr);
}

void PutEverything(HWND window) {
    const OpenedClipboard clipboard(window);
    EmptyClipboard();
    for (const Offer& offer : offers) {
        if (delayed) {
            SetClipboardData(offer.format, nullptr);
        } else {
            Put(offer);
        }
    }
}

Offer ReadOffer(const std::wstring& argument) {
    const std::size_t sign = argument.find(L'=');
    if (sign == std::wstring::npos) throw std::runtime_error(Utf8(argument) + " is not FORMAT=FILE");
    Offer offer;
    offer.formatText = argument.substr(0, sign);
    offer.format = FormatNumber(offer.formatText);
    offer.bytes = ReadWholeFile(argument.substr(sign + 1));
    return offer;
}

int QuitOthers() {
    const DWORD start = GetTickCount();
    while (HWND other = FindWindowW(kClassName, nullptr)) {
        if (GetTickCount() - start > kQuitBound) return 1;
        PostMessageW(other, WM_CLOSE, 0, 0);
        Sleep(5);
    }
    return 0;
}

int Run(int count, wchar_t** arguments) {
    for (int index = 1; index < count; ++index) {
        const std::wstring argument = arguments[index];
        if (argument == L"--quit") return QuitOthers();
        if (argument == L"--delayed") {
            delayed = true;
        } else {
            offers.push_back(ReadOffer(argument));
        }
    }
    PutEverything(MakeOwner());
    Say("ready");
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    try {
        return Run(count, arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "clipput: %s\n", error.what());
        return 1;
    }
}
