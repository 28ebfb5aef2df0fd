#pragma once

#include <string>
#include <vector>

#include "engine/formatsets/FormatSetList.h"

class CFormats;

// The rules of the format-set dialog over its working copy of the list. The form shows what this holds and
// calls one method for each thing that the user does.
class FormatSetDialogModel {
 public:
    // Copies the process-wide list and selects the first set.
    FormatSetDialogModel();

    // The names for lstAlias, in index order.
    std::vector<std::wstring> Aliases() const;
    // The selected set, 0 for none.
    int Selected() const { return selected_; }
    void Select(int index);
    // The selected set's entries for lstFormat; empty when none is selected.
    const std::vector<FormatSetEntry>& Entries() const;

    // An entry of lstFormat (from 0) was clicked and shows its new check state.
    void SetEntrySave(std::size_t entry, bool save);

    // "Neu" with the formats now on the clipboard (null when they could not be read). True when a set was
    // added and selected: the rename follows at once. Else the user has been told why not.
    bool AddFromClipboard(const CFormats* formats);

    // "Ändern" with what the rename dialog returned. True when the name changed.
    bool Rename(const std::wstring& name);
    // The selected set's name; empty when none is selected.
    std::wstring SelectedName() const;

    // "Löschen": asks and deletes the selected set. True when it is gone; a neighbour is selected then.
    bool Delete();

    // OK: the working copy becomes the process-wide list.
    void Confirm() const;

 private:
    FormatSetList copy_;
    int selected_ = 0;
};

// The rename dialog: OK can be pressed with this new name.
bool AliasCanBeConfirmed(const std::wstring& newName);
// OK was pressed: false, with a message, for a name that the file cannot hold whole.
bool ConfirmAlias(const std::wstring& newName);
