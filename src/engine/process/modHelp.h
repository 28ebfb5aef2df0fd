#pragma once

#include <cstdint>
#include <string>

#include "engine/process/HelpTopics.h"
#include "platform/Handles.h"

// The help's topics; the value is the context number.
enum class HelpTopic : int {
#define NXCLIP_HELP_TOPIC(name, number, page) name = number,
    NXCLIP_HELP_TOPICS
#undef NXCLIP_HELP_TOPIC
};

// The commands of the system's help viewer that the program gives.
inline constexpr std::uint32_t kHelpContext = 1;  // the topic whose number is the data
inline constexpr std::uint32_t kHelpFinder = 11;  // contents and index

// The application's help file, beside the program; empty when it has none. Set by start-up.
extern std::wstring HelpFile;
// The directory of the help's HTML pages, with "\" at its end. Set by start-up.
extern std::wstring HelpPageDirectory;

// The way to the help's HTML pages, for systems without the help viewer.
class HelpPages {
 public:
    virtual ~HelpPages() = default;

    // True when the system can show a help file at all. Only its word counts: a viewer that merely says that
    // it is no longer supported reports success.
    virtual bool ViewerWorks() = 0;
    // Opens an HTML file in the user's browser.
    virtual bool OpenPage(const std::wstring& file) = 0;
};

// Puts `pages` in force (null for none) and returns the one before. It must outlive its use.
HelpPages* UseHelpPages(HelpPages* pages);

// Opens the help on a topic: in the system's help viewer or, where there is none or the help file is missing,
// as the HTML page of the same topic. Failures are told to the user. The viewer is never started on a file
// that is not there: it would block until the user answers.
void ShowHelp(WindowHandle window, HelpTopic topic = HelpTopic::Contents);

// The same with a command of the help viewer and its data. The topic is the one that the data names for
// kHelpContext, and the contents for every other command.
void ShowHelpCommand(WindowHandle window, std::uint32_t command, std::uintptr_t data);

// The HTML page of a context number, without its directory; the contents page for an unknown number.
std::wstring HelpPageOf(std::uintptr_t number);
