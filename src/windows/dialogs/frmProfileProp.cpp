#include "windows/dialogs/frmProfileProp.h"

#include "engine/flows/NodeProperties.h"
#include "engine/flows/ProfileActions.h"
#include "engine/views/ChooserRules.h"
#include "resources/controls.h"
#include "windows/controls/Readers.h"
#include "windows/controls/ToolTips.h"
#include "windows/dialogs/frmDirSelect.h"
#include "windows/dialogs/frmSelectTemplate.h"

namespace {

constexpr ReaderDescription kChooseDirectory{L"Clip-Verzeichnis auswählen"};
constexpr ReaderDescription kChooseTemplate{L"Vorlage auswählen"};

}  // namespace

void frmProfileProp::OnInit() {
    if (profile_ != nullptr)
        InitExisting();
    else
        InitNew();
    TellReaders(Control(cbDir), kChooseDirectory);
    TellReaders(Control(cb_template), kChooseTemplate);
    ShowToolTips(Window(), {{chkGlobalFree, L"Freigabe aller Strukturänderungen"}});
    tbName_Change();
}

void frmProfileProp::InitNew() {
    SetWindowTextW(Window(), L"Neue Profil");
    SetText(tbName, L"Neues Profil");
    for (const int control : {lbStructCount, lbClipCount, chkLocked})
        Show(control, false);
    Show(lbCounts, false);
}

void frmProfileProp::InitExisting() {
    const ProfileProperties profile = ReadProfileProperties(*profile_);
    SetText(tbName, profile.name);
    SetText(tbDir, profile.directory);
    SetText(tbInfo, profile.info);
    Check(chkLocked, profile.locked);
    Check(chkGlobalFree, profile.globalFree);
    SetText(lbStructCount, std::to_wstring(profile.folders) + L" Ordner");
    SetText(lbClipCount, std::to_wstring(profile.clips) + L" Clips");
    SendMessageW(Control(tbDir), EM_SETREADONLY, TRUE, 0);
    Enable(cbDir, false);
    for (const int control : {lbTemplate, tbTemplate, cb_template})
        Show(control, false);
    locked_ = profile.locked;
    if (locked_) OnlyRead();
}

void frmProfileProp::OnlyRead() {
    for (const int control : {tbName, tbInfo})
        SendMessageW(Control(control), EM_SETREADONLY, TRUE, 0);
    Enable(chkGlobalFree, false);
}

void frmProfileProp::OnCommand(int control, int code) {
    if (control == tbName && code == EN_CHANGE)
        tbName_Change();
    else if (control == cbDir && code == BN_CLICKED)
        cbDir_Click();
    else if (control == cb_template && code == BN_CLICKED)
        cb_template_Click();
    else
        Dialog::OnCommand(control, code);
}

void frmProfileProp::tbName_Change() {
    Enable(cb_ok, NameCanBeConfirmed(Text(tbName)));
}

void frmProfileProp::cbDir_Click() {
    frmDirSelect dialog(L"Verzeichnis auswählen", Text(tbDir));
    if (dialog.ShowModal(Window(), IDD_frmDirSelect)) SetText(tbDir, dialog.Directory());
}

void frmProfileProp::cb_template_Click() {
    frmSelectTemplate dialog;
    if (!dialog.ShowModal(Window(), IDD_frmSelectTemplate)) return;
    templateFile_ = dialog.TemplateFile();
    SetText(tbTemplate, LastPartOf(templateFile_));
    // What the template brings along is there to be changed; what was typed stays.
    if (Text(tbInfo) == templateInfo_) SetText(tbInfo, dialog.Preview().info);
    templateInfo_ = dialog.Preview().info;
    Check(chkGlobalFree, dialog.Preview().globalFree);
}

void frmProfileProp::OnOk() {
    if (locked_) return Close(false);
    name_ = Text(tbName);
    directory_ = Text(tbDir);
    info_ = Text(tbInfo);
    globalFree_ = Checked(chkGlobalFree);
    if (profile_ == nullptr) {
        if (ConfirmNewProfile(name_, directory_, info_)) Close(true);
        return;
    }
    ProfileProperties changed = ReadProfileProperties(*profile_);
    changed.name = name_;
    changed.info = info_;
    changed.globalFree = globalFree_;
    if (ApplyProfileProperties(tree_, *profile_, changed)) Close(true);
}
