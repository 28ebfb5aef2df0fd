// Lets a script drive programs: reads a command a line, its fields separated by tabulators, and answers each
// with "ok" or "failed" and the number of lines that follow, then those lines. Everything is UTF-8. Ends, and
// ends all programs it started, at the end of its input.
//
//   prepare                     a fresh directory with a copy of NXClip, no settings; answers the directory
//   setting SECTION KEY VALUE   writes a setting
//   start                       starts NXClip and waits for its window
//   profile NAME                makes a profile by menu and dialog; answers its directory
//   autodetect 0|1              automatic capture by the tool bar
//   expand                      opens the whole tree
//   tree | list | title | status    what the window shows
//   watch                       remembers the tree's items
//   newclip SECONDS             waits for a clip that came after that; answers a number that names it
//   select CLIP                 selects the clip with such a number
//   put                         puts the selected clip on the clipboard and waits for the success
//   tab PLACE                   goes to a tab of the preview, counted from 0
//   command NUMBER              posts a menu command
//   main                        answers the main window's place: left, top, width, height
//   dialog TITLE                waits for a dialog and answers its place
//   press TITLE NUMBER          presses a button of a dialog
//   page TITLE NUMBER PLACE     goes to a tab of a dialog's control
//   answer BUTTON               waits for a message box, presses a button of it and answers its text
//   gone TITLE                  closes a dialog and waits for its end
//   quit                        ends NXClip by its menu; answers the exit code
//   run COMMANDLINE             starts another program
//   copyall CLASS               waits for the other program's control of a class, selects all in it, copies
//   close                       closes the other program, or ends it
//   outline                     answers every visible window

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "desktop/Driver.h"
#include "desktop/Input.h"
#include "desktop/Outline.h"
#include "desktop/Settings.h"
#include "desktop/Utf8.h"

namespace {

using Fields = std::vector<std::wstring>;

std::unique_ptr<Driver> nxclip;
std::unique_ptr<Process> other;
std::set<HTREEITEM> known;
std::vector<HTREEITEM> clips;

const std::wstring& Field(const Fields& fields, std::size_t index) {
    if (index >= fields.size()) throw std::runtime_error("a field is missing");
    return fields[index];
}

Driver& Program() {
    if (nxclip == nullptr) throw std::runtime_error("nothing is prepared");
    return *nxclip;
}

// A foreign program on a busy machine takes its time; what it does not answer is asked once more.
constexpr std::chrono::seconds kForeignBound{120};

LRESULT AskPatiently(Window control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    std::optional<LRESULT> answer;
    WaitFor(
        "an answer of the other program",
        [&] {
            try {
                answer = control.Send(message, wParam, lParam);
            } catch (const DriverError&) {
                if (!control.Exists()) throw;
            }
            return answer.has_value();
        },
        kForeignBound);
    return *answer;
}

Window ForeignControl(const std::wstring& className) {
    for (Window window : other->Windows()) {
        for (Window inner : window.Descendants()) {
            if (inner.Visible() && inner.ClassName() == className) return inner;
        }
    }
    return {};
}

// Returns when the other program has changed the clipboard. One that does not is ended.
std::wstring CopyAll(const std::wstring& className) {
    try {
        const Window control = WaitFor(
            "the other program's " + Utf8(className), [&] { return ForeignControl(className); },
            kForeignBound);
        // The text is there a while after the window.
        WaitFor(
            "text in the other program", [&] { return AskPatiently(control, WM_GETTEXTLENGTH) > 0; },
            kForeignBound);
        AskPatiently(control, EM_SETSEL, 0, -1);
        const DWORD before = GetClipboardSequenceNumber();
        control.Post(WM_COPY);
        WaitFor(
            "the other program to copy", [&] { return GetClipboardSequenceNumber() != before; },
            kForeignBound);
    } catch (const std::exception&) {
        other.reset();
        throw;
    }
    return {};
}

std::wstring PlaceOf(Window window) {
    const RECT place = window.Rectangle();
    return std::to_wstring(place.left) + L" " + std::to_wstring(place.top) + L" " +
           std::to_wstring(place.right - place.left) + L" " + std::to_wstring(place.bottom - place.top);
}

std::wstring CloseOther() {
    if (other == nullptr) return {};
    for (Window window : other->Windows())
        window.Close();
    try {
        WaitFor("the other program's windows to close", [] { return other->Windows().empty(); });
    } catch (const DriverError&) {
        // It is ended.
    }
    other.reset();
    return {};
}

std::wstring Do(const Fields& fields) {
    const std::wstring& verb = fields.front();
    if (verb == L"prepare") {
        nxclip.reset();
        nxclip = std::make_unique<Driver>();
        return Program().Directory().wstring();
    }
    if (verb == L"setting") {
        WriteSetting(Field(fields, 1), Field(fields, 2), Field(fields, 3));
        return {};
    }
    if (verb == L"start") return Program().Start(), L"";
    if (verb == L"profile") {
        Program().MakeProfile(Field(fields, 1));
        return Program().ProfileDirectory().wstring();
    }
    if (verb == L"autodetect") return Program().SetAutoDetect(Field(fields, 1) == L"1"), L"";
    if (verb == L"expand") return Program().Tree().ExpandAll(), L"";
    if (verb == L"tree") return Program().Tree().Outline();
    if (verb == L"list") return Program().List().Outline();
    if (verb == L"title") return Program().Title();
    if (verb == L"status") return Program().StatusBar().Text();
    if (verb == L"watch") return known = Program().Items(), L"";
    if (verb == L"newclip") {
        const std::chrono::seconds bound(std::stoi(Field(fields, 1)));
        clips.push_back(Program().WaitForNewClip(known, bound).item);
        return std::to_wstring(clips.size() - 1);
    }
    if (verb == L"select") return Program().Tree().Select(clips.at(std::stoul(Field(fields, 1)))), L"";
    if (verb == L"tab") return Program().FormatTab().Select(std::stoi(Field(fields, 1))), L"";
    if (verb == L"put") return Program().PutOnClipboard(), L"";
    if (verb == L"command") return Program().Command(std::stoi(Field(fields, 1))), L"";
    // search <text> <row>: waits for the end of the search and chooses that row of its hits.
    if (verb == L"search") {
        Program().Main().SetText(tbFilter, Field(fields, 1));
        WaitFor("the end of the search", [] {
            const std::wstring status = Program().StatusBar().Text();
            return status.find(L" Treffer") != std::wstring::npos && !status.ends_with(L"...");
        });
        Click(Program().List().PlaceOf(std::stoi(Field(fields, 2))));
        return Program().StatusBar().Text();
    }
    if (verb == L"main") return PlaceOf(Program().Main());
    if (verb == L"dialog") return PlaceOf(Program().WaitForDialog(Field(fields, 1)));
    if (verb == L"press") {
        Program().WaitForDialog(Field(fields, 1)).Press(std::stoi(Field(fields, 2)));
        return {};
    }
    if (verb == L"page") {
        const Window dialog = Program().WaitForDialog(Field(fields, 1));
        return TabControl(dialog.Control(std::stoi(Field(fields, 2)))).Select(std::stoi(Field(fields, 3))),
               L"";
    }
    if (verb == L"answer") return Program().AnswerNotice(std::stoi(Field(fields, 1)));
    if (verb == L"gone") {
        const Window dialog = Program().WaitForDialog(Field(fields, 1));
        dialog.Close();
        return Driver::WaitUntilGone(dialog), L"";
    }
    if (verb == L"quit") return std::to_wstring(Program().Quit());
    if (verb == L"run") {
        other = std::make_unique<Process>(Field(fields, 1));
        // It may only be there to start the real one.
        other->MayEnd();
        return {};
    }
    if (verb == L"copyall") return CopyAll(Field(fields, 1));
    if (verb == L"close") return CloseOther();
    if (verb == L"outline") return WideText(ScreenOutline());
    throw std::runtime_error("unknown command " + Utf8(verb));
}

Fields Split(const std::wstring& line) {
    Fields fields;
    for (std::size_t start = 0; start <= line.size();) {
        const std::size_t end = std::min(line.find(L'\t', start), line.size());
        fields.push_back(line.substr(start, end - start));
        start = end + 1;
    }
    return fields;
}

void Answer(const char* word, std::string text) {
    if (!text.empty() && text.back() != '\n') text += '\n';
    std::cout << word << ' ' << std::count(text.begin(), text.end(), '\n') << '\n' << text << std::flush;
}

}  // namespace

int wmain() {
    for (std::string line; std::getline(std::cin, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        try {
            Answer("ok", Utf8(Do(Split(WideText(line)))));
        } catch (const std::exception& error) {
            Answer("failed", error.what());
        }
    }
    other.reset();
    nxclip.reset();
    return 0;
}
