#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>

#include "engine/process/modHelp.h"

// A dialog window made from a template of the resources, shown in the system's message font. One class per
// form; the object stays with its window while that lives. Enter presses cb_ok, Escape cb_cancel.
class Dialog {
 public:
    Dialog() = default;
    virtual ~Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Shows the dialog and returns when it has closed: true when it was confirmed. The open-dialog flag is
    // set meanwhile. A failure to make the window is told to the user and counts as not confirmed.
    bool ShowModal(HWND owner, int dialogTemplate);
    // The same for a dialog that the user did not ask for: while he works in another program it comes up over
    // the other windows and flashes, but leaves the keyboard where it is.
    bool ShowUnasked(HWND owner, int dialogTemplate);
    // Shows the dialog beside its owner and returns at once; the object must outlive the window.
    HWND ShowModeless(HWND owner, int dialogTemplate);
    // The same above all other windows and without the keyboard, for what the user did not ask for.
    HWND ShowNotice(HWND owner, int dialogTemplate);

    // Makes the dialog a page inside another one; not shown yet. The object must outlive the window.
    HWND CreatePage(HWND parent, int dialogTemplate);

    HWND Window() const { return window_; }

 protected:
    // The controls exist and have their fonts; the window is not shown yet.
    virtual void OnInit() {}
    // Sets what depends on the resolution of the window's monitor, beside places and fonts: pictures and
    // columns. After OnInit, and again when the window has come to a monitor of another one.
    virtual void OnResolution() {}
    // A menu, button or notification of a control (`code` is BN_CLICKED, EN_CHANGE, ...).
    virtual void OnCommand(int control, int code);
    // The result is what the control gets to see of its notification.
    virtual LRESULT OnNotify(NMHDR& header);
    // Every other message; true when it is handled, with `result` as its result.
    virtual bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    // The window is gone; a form that is not modal may delete itself here.
    virtual void OnClosed() {}

    // Called by the window's own buttons. OnOk may keep the dialog open by not calling Close.
    virtual void OnOk() { Close(true); }
    virtual void OnCancel() { Close(false); }
    // Opens the help on the form's topic.
    virtual void OnHelp();

    void Close(bool confirmed);

    // A form whose controls stand on pages looks there.
    virtual HWND Control(int control) const { return GetDlgItem(window_, control); }
    std::wstring Text(int control) const;
    void SetText(int control, const std::wstring& text);
    bool Checked(int control) const;
    void Check(int control, bool checked);
    void Enable(int control, bool enabled);
    void Show(int control, bool shown);
    // Gives the focus the way the dialog manager does, with a text box wholly selected.
    void Focus(int control);

    // The topic that OnHelp opens.
    virtual HelpTopic Topic() const { return HelpTopic::Contents; }

 private:
    enum class Kind { Modal, Unasked, Modeless, Notice, Page };
    HWND CreateBeside(HWND owner, int dialogTemplate);
    bool LeavesTheKeyboard() const { return kind_ == Kind::Unasked || kind_ == Kind::Notice; }
    void ComeUp() const;
    void RunUntilClosed();
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void GiveUp();
    bool IsCovered() const;
    INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    Kind kind_ = Kind::Modal;
    bool confirmed_ = false;  // of a dialog shown unasked
};

// Passes on a message that the system tells top-level windows only.
void ForwardToChildren(HWND parent, UINT message, WPARAM wParam, LPARAM lParam);

// The text of any window.
std::wstring WindowText(HWND window);

// Called by the message loop: lets windows that are not modal have their dialog keys. True when the message
// was used.
bool TranslateModelessMessage(MSG& message);
