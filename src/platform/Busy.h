#pragma once

// What the program is in the middle of. Everything arrives as a message, also while one of these goes on
// below it on the stack.
enum class Busy {
    Dialog,         // a modal dialog or a message box is open
    Menu,           // a menu is open, or the command that was chosen in it is still to come
    Drag,           // a node is being dragged, or the mouse held on one or in a text of the preview
    Rename,         // a name is being edited in place
    TreeOperation,  // nodes are copied, moved, deleted, made, renamed or imported, with the questions about
                    // it
    Capture,        // a clip is being made of what the clipboard holds
    End,            // the window is to go as soon as nothing of it is left below on the stack
};
inline constexpr int kBusyCount = static_cast<int>(Busy::End) + 1;

// While it lives, the program is busy with this. Scopes of one kind nest.
class BusyScope {
 public:
    explicit BusyScope(Busy with) noexcept;
    ~BusyScope();
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

 private:
    Busy with_;
};

bool Is(Busy with) noexcept;
// Busy with nothing.
bool IsFree() noexcept;
