#include "engine/formatsets/FormatSetDialogModel.h"

#include <algorithm>

#include "engine/clipboard/CFormats.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/process/StoredLetters.h"
#include "platform/ByteBuffer.h"
#include "platform/Platform.h"

namespace {

void Inform(const std::wstring& text) {
    ThePlatform().user.Inform(text);
}

// Every text of the set can be stored: its key is the longest that its formats give.
bool CanBeStored(const CFormats& formats) {
    return FitsStoredText(FormatsKey(formats));
}

}  // namespace

FormatSetDialogModel::FormatSetDialogModel() : copy_(FormatSets()) {
    Select(1);
}

std::vector<std::wstring> FormatSetDialogModel::Aliases() const {
    std::vector<std::wstring> names;
    for (int index = 1; index <= copy_.Count(); ++index) {
        names.push_back(copy_.Item(index).Name);
    }
    return names;
}

void FormatSetDialogModel::Select(int index) {
    selected_ = copy_.Has(index) ? index : 0;
}

const std::vector<FormatSetEntry>& FormatSetDialogModel::Entries() const {
    static const std::vector<FormatSetEntry> none;
    return selected_ == 0 ? none : copy_.Item(selected_).Formats;
}

void FormatSetDialogModel::SetEntrySave(std::size_t entry, bool save) {
    if (entry >= Entries().size()) return;
    copy_.Item(selected_).Formats[entry].Save = save;
    FormatSetsChanged = true;
}

bool FormatSetDialogModel::AddFromClipboard(const CFormats* formats) {
    if (formats == nullptr || formats->Count() == 0) {
        Inform(L"Keine Einträge im Clipboard abgelegt.");
        return false;
    }
    if (const int known = FindFormatSet(copy_, formats); known != 0) {
        Inform(L"Der im Clipboard gefundene Formatsatz ist schon unter dem Namen\r\n\r\n" +
               copy_.Item(known).Name + L"\r\n\r\nverzeichnet.");
        return false;
    }
    const int added = CanBeStored(*formats) ? AddFormatSet(copy_, formats, L"<unbekannt>") : -1;
    if (added < 0) {
        ThePlatform().user.Tell(L"Der im Clipboard gefundene Formatsatz kann nicht gespeichert werden !!!");
        return false;
    }
    Select(added);
    return true;
}

std::wstring FormatSetDialogModel::SelectedName() const {
    return selected_ == 0 ? std::wstring() : copy_.Item(selected_).Name;
}

bool FormatSetDialogModel::Rename(const std::wstring& name) {
    if (selected_ == 0 || name == SelectedName()) return false;
    copy_.Item(selected_).Name = name;
    FormatSetsChanged = true;
    return true;
}

bool FormatSetDialogModel::Delete() {
    if (selected_ == 0 ||
        !ThePlatform().user.Ask(L"Wollen Sie wirklich den Formatsatz unwiederruflich lösche ?",
                                L"Formatsatz löschen", false)) {
        return false;
    }
    if (!DeleteFormatSet(copy_, selected_)) return false;
    // The set that moved up takes the place, or the one before when the last is gone.
    Select(std::min<int>(selected_, copy_.Count()));
    return true;
}

void FormatSetDialogModel::Confirm() const {
    FormatSets() = copy_;
}

bool AliasCanBeConfirmed(const std::wstring& newName) {
    return !newName.empty();
}

bool ConfirmAlias(const std::wstring& newName) {
    const std::wstring refusal = FitsStoredText(newName) ? LetterRefusal(newName, L"in einem Namen")
                                                         : std::wstring(L"Der Name ist zu lang !!!");
    if (!refusal.empty()) Inform(refusal);
    return refusal.empty();
}
