#include "commandline/ConsolePlatform.h"

#include <algorithm>
#include <string>

#include "platform/Text.h"

namespace {

class NoClipboard : public ClipboardPort {
    bool Open(WindowHandle) override { return false; }
    void Close() override {}
    bool Empty() override { return false; }
    FormatNumber NextFormat(FormatNumber) override { return 0; }
    DataHandle Data(FormatNumber) override { return DataHandle::None; }
    bool Announce(FormatNumber) override { return false; }
    bool Put(FormatNumber, DataHandle) override { return false; }
    bool Holds(FormatNumber) override { return false; }
    FormatNumber RegisterName(const std::string&) override { return 0; }
    std::optional<std::string> RegisteredName(FormatNumber, int) override { return std::nullopt; }
    WindowHandle Owner() override { return WindowHandle::None; }
    std::uint32_t SequenceNumber() override { return 0; }
    WindowHandle FirstViewer() override { return WindowHandle::None; }
    WindowHandle JoinChain(WindowHandle) override { return WindowHandle::None; }
    void LeaveChain(WindowHandle, WindowHandle) override {}
    void Listen(WindowHandle) override {}
    void StopListening(WindowHandle) override {}
    std::uint32_t LastError() override { return 0; }
};

class NoMemory : public MemoryPort {
    DataHandle Allocate(std::size_t) override { return DataHandle::None; }
    void* Lock(DataHandle) override { return nullptr; }
    void Unlock(DataHandle) override {}
    std::size_t Size(DataHandle) override { return 0; }
    void Free(DataHandle) override {}
};

class NoMetafiles : public MetafilePort {
    std::size_t PictureBlockSize() const override { return 0; }
    MetafilePicture ReadPicture(const void*) const override { return {}; }
    void WritePicture(const MetafilePicture&, void*) const override {}
    std::size_t BitsSize(std::int32_t) override { return 0; }
    bool GetBits(std::int32_t, void*, std::size_t) override { return false; }
    std::int32_t Create(const void*, std::size_t) override { return 0; }
    void Delete(std::int32_t) override {}
    std::size_t EnhancedBitsSize(DataHandle) override { return 0; }
    bool GetEnhancedBits(DataHandle, void*, std::size_t) override { return false; }
    DataHandle CreateEnhanced(const void*, std::size_t) override { return DataHandle::None; }
    void DeleteEnhanced(DataHandle) override {}
};

class NoSettings : public SettingsPort {
    std::wstring Read(const std::wstring&, const std::wstring&, const std::wstring& absent) override {
        return absent;
    }
    // This program keeps no settings, so to write none is no failure.
    bool Write(const std::wstring&, const std::wstring&, const std::wstring&) override { return true; }
    bool DeleteValue(const std::wstring&, const std::wstring&) override { return true; }
    std::wstring LogonCommand() override { return {}; }
    bool SetLogonCommand(const std::wstring&) override { return true; }
};

class NoWindows : public WindowPort {
    ProcedureAddress ExchangeProcedure(WindowHandle, ProcedureAddress) override {
        return ProcedureAddress::None;
    }
    MessageParameter CallProcedure(ProcedureAddress, WindowHandle, std::uint32_t, MessageParameter,
                                   MessageParameter) override {
        return 0;
    }
    MessageParameter Deliver(WindowHandle, std::uint32_t, MessageParameter, MessageParameter) override {
        return 0;
    }
    bool Answers(WindowHandle) override { return false; }
    bool Hangs(WindowHandle) override { return false; }
    WindowHandle Foreground() override { return WindowHandle::None; }
    void BringToFront(WindowHandle) override {}
    std::wstring Title(WindowHandle, int) override { return {}; }
    bool SetAlwaysOnTop(WindowHandle, bool) override { return false; }
    std::uint16_t AddGlobalAtom(const std::string&) override { return 0; }
    void DeleteGlobalAtom(std::uint16_t) override {}
    bool AddHotKey(WindowHandle, std::int32_t, std::uint32_t, std::uint32_t) override { return false; }
    std::wstring AltGrCharacter(wchar_t) override { return {}; }
    void RemoveHotKey(WindowHandle, std::int32_t) override {}
    bool OpenHelp(WindowHandle, const std::wstring&, std::uint32_t, std::uintptr_t) override { return false; }
};

// Messages are written for boxes, with lines of their own; here each is one line.
std::wstring OnOneLine(std::wstring text) {
    std::erase(text, L'\r');
    std::replace(text.begin(), text.end(), L'\n', L' ');
    return text;
}

class ConsoleUser : public UserPort {
 public:
    explicit ConsoleUser(ConsolePort& console) : console_(console) {}

    void Tell(const std::wstring& text, const std::wstring&, MessageIcon) override {
        console_.WriteError(OnOneLine(text) + L"\n");
    }
    void TellLater(const std::wstring& text) override { Tell(text, {}, MessageIcon::None); }
    bool Ask(const std::wstring& text, const std::wstring&, bool) override {
        if (saysYes) return true;
        console_.WriteError(OnOneLine(text) + L" [j/N] ");
        const std::wstring answer = LowerCase(Trim(console_.ReadLine().value_or(L"")));
        return answer == L"j" || answer == L"ja";
    }
    void Status(const std::wstring&) override {}
    PointerShape ShowPointer(PointerShape) override { return PointerShape::Normal; }
    void Beep() override {}
    bool PlaySoundFile(const std::wstring&) override { return false; }

    bool saysYes = false;

 private:
    ConsolePort& console_;
};

}  // namespace

struct ConsolePlatform::Ports {
    Ports(FilePort& files, ClockPort& clock, ConsolePort& console)
        : user(console), platform{clipboard, memory, metafiles, files, settings, user, windows, clock} {}

    NoClipboard clipboard;
    NoMemory memory;
    NoMetafiles metafiles;
    NoSettings settings;
    NoWindows windows;
    ConsoleUser user;
    Platform platform;
};

ConsolePlatform::ConsolePlatform(FilePort& files, ClockPort& clock, ConsolePort& console)
    : ports_(std::make_unique<Ports>(files, clock, console)), before_(UsePlatform(&ports_->platform)) {}

ConsolePlatform::~ConsolePlatform() {
    UsePlatform(before_);
}

void ConsolePlatform::SayYes() {
    ports_->user.saysYes = true;
}
