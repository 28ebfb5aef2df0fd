#include "fake/FakeWindows.h"

#include <algorithm>
#include <utility>

#include "platform/Text.h"

namespace {

constexpr std::uint32_t kHotKeyMessage = 0x0312;
constexpr std::size_t kLongestAtom = 255;

bool SameName(const std::string& a, const std::string& b) {
    return CompareNoCase(TextFromAnsi(a), TextFromAnsi(b)) == 0;
}

}  // namespace

ProcedureAddress FakeWindows::ExchangeProcedure(WindowHandle window, ProcedureAddress procedure) {
    const bool fails = failures_.Strikes();
    const auto found = windows_.find(window);
    if (fails || found == windows_.end()) return ProcedureAddress::None;
    return std::exchange(found->second.procedure, procedure);
}

MessageParameter FakeWindows::CallProcedure(ProcedureAddress procedure, WindowHandle window,
                                            std::uint32_t message, MessageParameter wParam,
                                            MessageParameter lParam) {
    const auto found = procedures_.find(procedure);
    if (found == procedures_.end()) return 0;
    const Procedure call = found->second;  // it may add or remove procedures
    return call ? call(window, message, wParam, lParam) : 0;
}

MessageParameter FakeWindows::Deliver(WindowHandle window, std::uint32_t message, MessageParameter wParam,
                                      MessageParameter lParam) {
    if (window == hung) return 0;
    return CallProcedure(ProcedureOf(window), window, message, wParam, lParam);
}

void FakeWindows::BringToFront(WindowHandle window) {
    if (windows_.contains(window)) foreground = window;
}

std::wstring FakeWindows::Title(WindowHandle window, int most) {
    const auto found = windows_.find(window);
    if (found == windows_.end() || most <= 0) return {};
    const std::wstring& title = found->second.title;
    return title.substr(0, std::min(title.find(L'\0'), static_cast<std::size_t>(most)));
}

std::uint16_t FakeWindows::AddGlobalAtom(const std::string& text) {
    if (failures_.Strikes(Operation::WindowsAddAtom) || text.empty() || text.size() > kLongestAtom) return 0;
    for (auto& [number, atom] : atoms_)
        if (SameName(atom.text, text)) {
            ++atom.uses;
            return number;
        }
    atoms_[++lastAtom_] = Atom{text, 1};
    return lastAtom_;
}

void FakeWindows::DeleteGlobalAtom(std::uint16_t atom) {
    const auto found = atoms_.find(atom);
    if (found != atoms_.end() && --found->second.uses == 0) atoms_.erase(found);
}

bool FakeWindows::AddHotKey(WindowHandle window, std::int32_t identifier, std::uint32_t modifiers,
                            std::uint32_t key) {
    const bool fails = failures_.Strikes(Operation::WindowsAddHotKey);
    const bool taken = std::any_of(hotKeys_.begin(), hotKeys_.end(), [&](const HotKey& hotKey) {
        return hotKey.modifiers == modifiers && hotKey.key == key;
    });
    if (fails || taken || !windows_.contains(window)) return false;
    hotKeys_.push_back({window, identifier, modifiers, key});
    return true;
}

void FakeWindows::RemoveHotKey(WindowHandle window, std::int32_t identifier) {
    std::erase_if(hotKeys_, [&](const HotKey& hotKey) {
        return hotKey.window == window && hotKey.identifier == identifier;
    });
}

bool FakeWindows::OpenHelp(WindowHandle window, const std::wstring& file, std::uint32_t command,
                           std::uintptr_t data) {
    if (failures_.Strikes() || !files_.Has(file)) return false;
    helps.push_back({window, file, command, data});
    return true;
}

WindowHandle FakeWindows::AddWindow(const std::wstring& title, Procedure procedure) {
    const auto window = static_cast<WindowHandle>(lastWindow_ += 2);
    windows_[window] = Window{title, AddProcedure(std::move(procedure))};
    return window;
}

void FakeWindows::RemoveWindow(WindowHandle window) {
    windows_.erase(window);
    std::erase_if(hotKeys_, [&](const HotKey& hotKey) { return hotKey.window == window; });
    if (foreground == window) foreground = WindowHandle::None;
}

ProcedureAddress FakeWindows::AddProcedure(Procedure procedure) {
    const auto address = static_cast<ProcedureAddress>(lastProcedure_ += 16);
    procedures_[address] = std::move(procedure);
    return address;
}

ProcedureAddress FakeWindows::ProcedureOf(WindowHandle window) const {
    const auto found = windows_.find(window);
    return found == windows_.end() ? ProcedureAddress::None : found->second.procedure;
}

bool FakeWindows::PressHotKey(std::uint32_t modifiers, std::uint32_t key) {
    for (const HotKey& hotKey : hotKeys_)
        if (hotKey.modifiers == modifiers && hotKey.key == key) {
            const HotKey pressed = hotKey;
            Deliver(pressed.window, kHotKeyMessage, pressed.identifier,
                    static_cast<MessageParameter>(key << 16 | modifiers));
            return true;
        }
    return false;
}

void FakeWindows::TakeHotKey(std::uint32_t modifiers, std::uint32_t key) {
    hotKeys_.push_back({WindowHandle::None, 0, modifiers, key});
}

int FakeWindows::AtomUses(const std::string& text) const {
    for (const auto& [number, atom] : atoms_)
        if (SameName(atom.text, text)) return atom.uses;
    return 0;
}
