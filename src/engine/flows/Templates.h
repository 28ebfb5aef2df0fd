#pragma once

#include <array>
#include <string>
#include <vector>

#include "engine/flows/ProfileActions.h"

// Profile templates: tree data files with ready-made folders, in "Templates\" beside the program.

// The directory of the templates, with "\" at its end.
std::wstring TemplateDirectory();
// The names of the template files, sorted.
std::vector<std::wstring> TemplateFiles();

// What a template brings along besides its tree: from the top node of a template loaded into the preview's
// own tree; empty when that is no profile.
struct TemplatePreview {
    std::wstring name;
    std::wstring info;
    bool globalFree = false;
};
// Empties the preview tree and loads a template into it.
TemplatePreview LoadTemplatePreview(CTreeViewEx& previewTree, const std::wstring& templateFile);

// The profiles that the first-start dialog offers, in the order of its boxes and of their installation.
struct FirstStartTemplate {
    const wchar_t* caption;
    const wchar_t* file;  // empty for a profile without folders
    const wchar_t* name;  // of the profile and of its directory
};
inline constexpr int kFirstStartTemplateCount = 4;
extern const std::array<FirstStartTemplate, kFirstStartTemplateCount> kFirstStartTemplates;

// Offered beside them, for whoever wants to begin at once.
extern const FirstStartTemplate kPlainProfile;

// The welcome of the first-start dialog: its two labels.
extern const wchar_t* const kFirstStartTitle;
extern const wchar_t* const kFirstStartText;

// The state of the box that turns the dialog off, when it opens.
bool FirstStartBoxChecked();

// True while the first start is due and nothing has been set up yet: only then the dialog's offers are
// preselected, so that it changes nothing silently when it is opened again.
bool IsFreshStart();

// What the first-start dialog was confirmed with.
struct FirstStartChoice {
    bool plain = false;
    std::array<bool, kFirstStartTemplateCount> templates{};
    bool boxChecked = false;
};

// The OK of the first-start dialog: keeps the state of its box, makes the directories and installs what was
// chosen, the plain profile in front of the templates. What was attached is saved, and the first of it
// becomes the active container. The result is that profile's node, null when nothing was attached.
Node* InstallFirstStartTemplates(CTreeViewEx& tree, ActiveContainer& container,
                                 const FirstStartChoice& choice);
