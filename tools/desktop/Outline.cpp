#include "desktop/Outline.h"

#include <algorithm>
#include <cstdio>

#include "desktop/Controls.h"
#include "desktop/Utf8.h"

namespace {

constexpr UINT kPatience = 300;
constexpr std::size_t kMaxShown = 400;
constexpr int kMaxDepth = 8;

// Asks the window itself, for that is where the text of a control lies, but not for long.
std::wstring TextWithoutWaiting(Window window) {
    wchar_t text[kMaxShown] = L"";
    DWORD_PTR copied = 0;
    if (SendMessageTimeoutW(window.Handle(), WM_GETTEXT, kMaxShown, reinterpret_cast<LPARAM>(text),
                            SMTO_ABORTIFHUNG, kPatience, &copied) == 0) {
        return L"<no answer>";
    }
    return text;
}

bool Answers(Window window) {
    DWORD_PTR result = 0;
    return SendMessageTimeoutW(window.Handle(), WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kPatience, &result) != 0;
}

std::wstring ContentOf(Window window, const std::wstring& className) {
    if (className == WC_TREEVIEWW) return TreeControl(window).Outline();
    if (className == WC_LISTVIEWW) return ListControl(window).Outline();
    if (className == STATUSCLASSNAMEW) return StatusBarControl(window).Text();
    std::wstring text;
    if (lstrcmpiW(className.c_str(), L"ListBox") == 0) {
        for (const std::wstring& line : ListBoxLines(window))
            text += line + L"\n";
    }
    return text;
}

void Append(std::string& outline, std::size_t indent, std::wstring_view text) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', start), text.size());
        outline += std::string(indent, ' ') + Utf8(text.substr(start, end - start)) + "\n";
        start = end + 1;
    }
}

void Append(std::string& outline, Window window, int depth) {
    const std::size_t indent = 2 * static_cast<std::size_t>(depth + 1);
    const std::wstring className = window.ClassName();
    const RECT place = window.Rectangle();
    char line[160];
    std::snprintf(line, sizeof line, "%s #%d at %ld,%ld %ldx%ld%s%s", Utf8(className).substr(0, 60).c_str(),
                  window.Number(), place.left, place.top, place.right - place.left, place.bottom - place.top,
                  window.Enabled() ? "" : " disabled", window.Minimised() ? " minimised" : "");
    outline += std::string(indent, ' ') + line;
    const std::wstring text = TextWithoutWaiting(window);
    if (!text.empty()) outline += " \"" + Utf8(text) + "\"";
    outline += "\n";
    Append(outline, indent + 4, ContentOf(window, className));
    if (depth == kMaxDepth) return;
    for (Window child : window.Children()) {
        if (child.Visible()) Append(outline, child, depth + 1);
    }
}

// Who has the keyboard and the mouse of the window's thread, and whether it is in a loop of its own: a held
// mouse or a menu can keep a program from what it was told to do.
void AppendThread(std::string& outline, Window window) {
    const GUITHREADINFO thread = window.Thread();
    const auto name = [](HWND one) { return one != nullptr ? Utf8(Window(one).ClassName()) : "nobody"; };
    outline += "    keyboard: " + name(thread.hwndFocus) + ", mouse: " + name(thread.hwndCapture);
    if (thread.flags & GUI_INMOVESIZE) outline += ", is moved";
    if (thread.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE)) outline += ", in a menu";
    outline += "\n";
}

}  // namespace

std::string WindowOutline(Window window) {
    // A failure in here would ask for an outline again.
    static thread_local bool busy = false;
    if (busy) return "  (this question itself failed)\n";
    busy = true;
    std::string outline;
    try {
        if (Answers(window)) {
            Append(outline, window, 0);
        } else {
            outline = "  " + Utf8(window.ClassName()) + " does not answer\n";
        }
    } catch (const DriverError& error) {
        outline += std::string("  (the rest cannot be read: ") + error.what() + ")\n";
    }
    busy = false;
    return outline;
}

std::string ScreenOutline() {
    std::string outline = "the screen holds:\n";
    for (Window window : TopLevelWindows()) {
        outline += WindowOutline(window);
        AppendThread(outline, window);
    }
    return outline;
}
