#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fake/FakeMemory.h"
#include "fake/FakeMetafiles.h"
#include "fake/FakeWindows.h"
#include "platform/Clipboard.h"

// The system clipboard with the program under test on one side and another program on the other. Announced
// formats are rendered by a message to their owner's window procedure, inside the call that asks for them.
class FakeClipboard : public ClipboardPort {
 public:
    FakeClipboard(Ledger& ledger, Failures& failures, FakeMemory& memory, FakeMetafiles& metafiles,
                  FakeWindows& windows);

    bool Open(WindowHandle owner) override;
    void Close() override;
    bool Empty() override;
    FormatNumber NextFormat(FormatNumber previous) override;
    DataHandle Data(FormatNumber format) override;
    bool Announce(FormatNumber format) override;
    bool Put(FormatNumber format, DataHandle data) override;
    bool Holds(FormatNumber format) override;
    FormatNumber RegisterName(const std::string& name) override;
    std::optional<std::string> RegisteredName(FormatNumber format, int most) override;
    WindowHandle Owner() override { return owner_; }
    std::uint32_t SequenceNumber() override { return sequence_; }
    WindowHandle FirstViewer() override { return firstViewer_; }
    WindowHandle JoinChain(WindowHandle window) override;
    void LeaveChain(WindowHandle window, WindowHandle next) override;
    void Listen(WindowHandle window) override { listeners_.push_back(window); }
    void StopListening(WindowHandle window) override { std::erase(listeners_, window); }
    std::uint32_t LastError() override { return lastError_; }

    // What another program puts on the clipboard.
    struct Offer {
        FormatNumber format;
        // Makes the data, owned by the clipboard; None when the program fails to render it.
        std::function<DataHandle(FakeClipboard&)> make;
        // Announced only, and made when somebody asks.
        bool late = false;
    };
    // A text (1, 7, 13) loses its last character to the zero that the system ends it with.
    static Offer Bytes(FormatNumber format, std::string bytes);
    // Its block may be larger than it has to be.
    static Offer Picture(std::string bits, std::int32_t mode = 8, std::int32_t xExtent = 100,
                         std::int32_t yExtent = 100, std::size_t surplus = 0);
    static Offer Enhanced(std::string bits);
    static Offer GdiObject(FormatNumber format);
    static Offer Late(Offer offer);
    // Announced by a program that gives nothing when it is asked.
    static Offer Refused(FormatNumber format);

    // Another program replaces the content; the viewers are told.
    void OtherProgramCopies(const std::vector<Offer>& offers);
    // Another program reads a format, which the owner renders if it was only announced: a block's bytes, a
    // metafile's bits. None when there is nothing.
    std::optional<std::string> OtherProgramReads(FormatNumber format);
    // Another program has the clipboard open for the next `opens` tries to open it.
    void OtherProgramHolds(int opens) { busyOpens_ = opens; }

    WindowHandle otherProgram = WindowHandle::None;
    // The system promises no order of the chain's message and the listener's.
    bool listenersFirst = false;
    // Every format that was rendered by its owner, in order.
    std::vector<FormatNumber> rendered;

    bool IsOpen() const { return openFor_.has_value(); }
    // The formats that stand on the clipboard, in the order of their enumeration. No call of the port.
    std::vector<FormatNumber> Formats() const;
    // A format that stands there is announced and not rendered yet.
    bool IsPending(FormatNumber format) const;
    // The data that stands there already; empty when there is none. No call of the port.
    std::string Content(FormatNumber format) const;
    // Some viewer has ended without a word: nobody is told along the chain any more.
    void BreakChain() { firstViewer_ = WindowHandle::None; }
    // What stands there belongs to nobody any more, as when its owner has ended.
    void ForgetOwner() { owner_ = WindowHandle::None; }

 private:
    struct Entry {
        FormatNumber format;
        DataHandle data = DataHandle::None;
        std::function<DataHandle(FakeClipboard&)> make;  // another program's way to render
    };

    bool MayPut(FormatNumber format) const;
    Entry* Find(FormatNumber format);
    const Entry* Find(FormatNumber format) const;
    void EndText(FormatNumber format, DataHandle data);
    void Store(FormatNumber format, DataHandle data);
    DataHandle DataOf(FormatNumber format);
    void Render(FormatNumber format);
    std::int32_t MetafileIn(FormatNumber format, DataHandle data) const;
    std::string BytesOf(FormatNumber format, DataHandle data) const;
    void FreeData(const Entry& entry);
    void FreeContent();
    void TellViewers();
    void TellListeners();
    bool Fail(std::uint32_t error);

    Ledger& ledger_;
    Failures& failures_;
    FakeMemory& memory_;
    FakeMetafiles& metafiles_;
    FakeWindows& windows_;

    std::vector<Entry> content_;
    std::optional<WindowHandle> openFor_;
    WindowHandle owner_ = WindowHandle::None;
    WindowHandle firstViewer_ = WindowHandle::None;
    std::map<FormatNumber, std::string> names_;
    FormatNumber lastName_ = 0xC000;
    std::uint32_t lastError_ = 0;
    int busyOpens_ = 0;
    int rendering_ = 0;
    bool changed_ = false;
    std::uint32_t sequence_ = 1;
    std::vector<WindowHandle> listeners_;
};
