#include "platform/Clipboard.h"

#include <algorithm>
#include <vector>

#include "contract/ContractTest.h"
#include "fake/FakeMetafiles.h"

namespace {

constexpr FormatNumber kText = 1, kPicture = 3, kOemText = 7, kUnicode = 13, kEnhancedMetafile = 14,
                       kLocale = 16, kDibV5 = 17, kPrivate = 0x200;
constexpr std::uint32_t kRenderFormat = 0x0305, kDrawClipboard = 0x0308, kChangeChain = 0x030D;

struct Message {
    WindowHandle window;
    std::uint32_t message;
    MessageParameter wParam;
    MessageParameter lParam;
};

MessageParameter ParameterOf(WindowHandle window) {
    return static_cast<MessageParameter>(window);
}

class ClipboardContract : public ContractTest {
 protected:
    // A window that notes its messages and renders what `renders` holds.
    WindowHandle MakeNotingWindow() {
        return home->MakeWindow(L"Fenster", [this](WindowHandle to, std::uint32_t message,
                                                   MessageParameter wParam, MessageParameter lParam) {
            messages.push_back({to, message, wParam, lParam});
            if (message == kRenderFormat && renders) {
                EXPECT_TRUE(clipboard.Put(static_cast<FormatNumber>(wParam), MakeBlock(*renders)));
            }
            return MessageParameter{0};
        });
    }

    int Count(std::uint32_t message) const {
        return static_cast<int>(std::count_if(messages.begin(), messages.end(),
                                              [&](const Message& one) { return one.message == message; }));
    }

    // Opens the clipboard, as soon as whoever still has it open after a change lets go of it.
    void Open(WindowHandle owner) {
        ASSERT_TRUE(home->PumpUntil([&] { return clipboard.Open(owner); })) << clipboard.LastError();
    }

    void OpenEmpty(WindowHandle owner) {
        Open(owner);
        ASSERT_TRUE(clipboard.Empty());
    }

    std::vector<FormatNumber> Enumerated() {
        std::vector<FormatNumber> formats;
        for (FormatNumber format = 0; (format = clipboard.NextFormat(format)) != 0;)
            formats.push_back(format);
        return formats;
    }

    std::vector<Message> messages;
    std::optional<std::string> renders;
    WindowHandle window = MakeNotingWindow();
};

}  // namespace

TEST_F(ClipboardContract, Put_BecomesReadableByOthers) {
    OpenEmpty(window);
    const std::string text("Gr\xFC\xDF\0", 5);
    EXPECT_TRUE(clipboard.Put(kText, MakeBlock(text)));
    EXPECT_TRUE(clipboard.Put(clipboard.RegisterName("Contract Private"), MakeBlock("a\xFF z")));
    clipboard.Close();
    EXPECT_EQ(clipboard.Owner(), window);
    EXPECT_EQ(home->OtherReads(kText), text);
    EXPECT_EQ(home->OtherReads(clipboard.RegisterName("Contract Private")), "a\xFF z");
    EXPECT_EQ(home->OtherReads(kPicture), std::nullopt);
}

TEST_F(ClipboardContract, Listen_TellsOfEachChangeWithoutAChain) {
    constexpr std::uint32_t kUpdate = 0x031D;
    clipboard.Listen(window);
    home->OtherCopies({{kText, std::string("abc\0", 4)}});
    EXPECT_TRUE(home->PumpUntil([&] { return Count(kUpdate) == 1; }));
    clipboard.StopListening(window);
    home->OtherCopies({{kText, std::string("abc\0", 4)}});
    const WindowHandle other = MakeNotingWindow();
    clipboard.Listen(other);
    home->OtherCopies({{kText, std::string("abc\0", 4)}});
    ASSERT_TRUE(home->PumpUntil([&] { return Count(kUpdate) == 2; }));
    EXPECT_EQ(messages.back().window, other);
    clipboard.StopListening(other);
}

TEST_F(ClipboardContract, SequenceNumber_GrowsWithEachChangeAndNotByReading) {
    home->OtherCopies({{kText, std::string("abc\0", 4)}});
    Open(window);
    const std::uint32_t first = clipboard.SequenceNumber();
    EXPECT_NE(first, 0u);
    EXPECT_NE(clipboard.Data(kText), DataHandle::None);
    EXPECT_EQ(clipboard.SequenceNumber(), first);
    clipboard.Close();
    EXPECT_EQ(clipboard.SequenceNumber(), first);
    home->OtherCopies({{kText, std::string("abc\0", 4)}});
    EXPECT_NE(clipboard.SequenceNumber(), first);
}

TEST_F(ClipboardContract, ClosedClipboard_RefusesEverything) {
    const DataHandle block = MakeBlock("abc");
    home->OtherCopies({{kText, std::string("abc\0", 4)}});
    EXPECT_FALSE(clipboard.Empty());
    EXPECT_NE(clipboard.LastError(), 0u);
    EXPECT_EQ(clipboard.NextFormat(0), 0);
    EXPECT_EQ(clipboard.Data(kText), DataHandle::None);
    EXPECT_FALSE(clipboard.Announce(kText));
    EXPECT_FALSE(clipboard.Put(kText, block));
    EXPECT_TRUE(clipboard.Holds(kText));  // this may be asked at any time
    memory.Free(block);                   // still the program's own
}

TEST_F(ClipboardContract, Open_FailsWhileAnotherWindowHasItOpen) {
    const WindowHandle second = MakeNotingWindow();
    Open(window);
    EXPECT_FALSE(clipboard.Open(second));
    EXPECT_EQ(clipboard.LastError(), 5u);
    clipboard.Close();
    EXPECT_TRUE(clipboard.Open(second));
    clipboard.Close();
    home->OtherHolds();
    EXPECT_FALSE(clipboard.Open(window));
    EXPECT_EQ(clipboard.LastError(), 5u);
    home->OtherReleases();
    Open(window);
    clipboard.Close();
}

TEST_F(ClipboardContract, Data_GivesWhatAnotherProgramCopied) {
    const FormatNumber named = clipboard.RegisterName("Contract Private");
    std::string large(300'000, 'x');
    large[299'999] = '\x80';
    home->OtherCopies({{kText, std::string("abc\0", 4)}, {named, large, true}, {kDibV5, "late", true}});
    EXPECT_EQ(clipboard.Owner(), home->OtherWindow());
    Open(window);
    const DataHandle text = clipboard.Data(kText);
    EXPECT_EQ(BytesOf(text), std::string("abc\0", 4));
    EXPECT_EQ(clipboard.Data(kText), text);
    EXPECT_EQ(BytesOf(clipboard.Data(named)), large);
    EXPECT_EQ(BytesOf(clipboard.Data(kDibV5)), "late");
    EXPECT_EQ(clipboard.Data(kPicture), DataHandle::None);
    EXPECT_NE(clipboard.LastError(), 0u);
    clipboard.Close();
}

TEST_F(ClipboardContract, Enumeration_GivesFormatsAsSet) {
    const FormatNumber named = clipboard.RegisterName("Contract Private");
    home->OtherCopies(
        {{named, "x"}, {kUnicode, std::string("a\0\0\0", 4)}, {kPicture, MetafileBitsWith("")}});
    Open(window);
    std::vector<FormatNumber> formats = Enumerated();
    clipboard.Close();
    // What the system makes of them itself stands behind them.
    ASSERT_GE(formats.size(), 3u);
    formats.resize(3);
    EXPECT_EQ(formats, (std::vector<FormatNumber>{named, kUnicode, kPicture}));
    EXPECT_TRUE(clipboard.Holds(kUnicode));
    EXPECT_FALSE(clipboard.Holds(kPrivate));
}

TEST_F(ClipboardContract, Announce_OwnerIsAskedOnceWhenSomebodyReads) {
    OpenEmpty(window);
    EXPECT_TRUE(clipboard.Announce(kPrivate));
    EXPECT_TRUE(clipboard.Announce(kOemText));
    EXPECT_TRUE(clipboard.Put(kLocale, MakeBlock("\x07\x04")));
    EXPECT_EQ(Enumerated(), (std::vector<FormatNumber>{kPrivate, kOemText, kLocale}));
    clipboard.Close();
    EXPECT_EQ(Count(kRenderFormat), 0);
    EXPECT_TRUE(clipboard.Holds(kPrivate));

    EXPECT_EQ(home->OtherReads(kPrivate), std::nullopt) << "a request that is not answered";
    messages.clear();
    renders = "rendered";
    EXPECT_EQ(home->OtherReads(kPrivate), "rendered");
    ASSERT_EQ(Count(kRenderFormat), 1);
    const Message request = *std::find_if(messages.begin(), messages.end(),
                                          [](const Message& one) { return one.message == kRenderFormat; });
    EXPECT_EQ(request.window, window);
    EXPECT_EQ(request.wParam, kPrivate);
    EXPECT_EQ(home->OtherReads(kPrivate), "rendered");
    EXPECT_EQ(Count(kRenderFormat), 1);
}

TEST_F(ClipboardContract, Metafiles_TravelBothWays) {
    const std::string bits = MetafileBitsWith("picture"), enhanced = EnhancedMetafileBitsWith("enhanced");
    OpenEmpty(window);
    const std::int32_t metafile = metafiles.Create(bits.data(), bits.size());
    ASSERT_NE(metafile, 0);
    std::string block(metafiles.PictureBlockSize(), '\0');
    metafiles.WritePicture({8, 100, 200, metafile}, block.data());
    EXPECT_TRUE(clipboard.Put(kPicture, MakeBlock(block)));
    EXPECT_TRUE(clipboard.Put(kEnhancedMetafile, metafiles.CreateEnhanced(enhanced.data(), enhanced.size())));
    clipboard.Close();
    EXPECT_EQ(home->OtherReads(kPicture), bits);
    EXPECT_EQ(home->OtherReads(kEnhancedMetafile), enhanced);

    home->OtherCopies({{kPicture, bits, true}, {kEnhancedMetafile, enhanced}});
    Open(window);
    const DataHandle picture = clipboard.Data(kPicture);
    const void* address = memory.Lock(picture);
    ASSERT_NE(address, nullptr);
    const std::int32_t stranger = metafiles.ReadPicture(address).metafile;
    memory.Unlock(picture);
    std::string copy(metafiles.BitsSize(stranger), '\0');
    EXPECT_TRUE(metafiles.GetBits(stranger, copy.data(), copy.size()));
    EXPECT_EQ(copy, bits);
    const DataHandle enhancedStranger = clipboard.Data(kEnhancedMetafile);
    copy.resize(metafiles.EnhancedBitsSize(enhancedStranger));
    EXPECT_TRUE(metafiles.GetEnhancedBits(enhancedStranger, copy.data(), copy.size()));
    EXPECT_EQ(copy, enhanced);
    clipboard.Close();
}

TEST_F(ClipboardContract, ViewerChain_TellsOfChangesAndOfLeavingWindows) {
    const WindowHandle before = clipboard.FirstViewer();
    EXPECT_EQ(clipboard.JoinChain(window), before);
    EXPECT_EQ(clipboard.FirstViewer(), window);
    EXPECT_TRUE(home->PumpUntil([&] { return Count(kDrawClipboard) == 1; }));  // on joining

    home->OtherCopies({{kText, "a"}});
    EXPECT_TRUE(home->PumpUntil([&] { return Count(kDrawClipboard) == 2; }));

    const WindowHandle second = MakeNotingWindow();
    EXPECT_EQ(clipboard.JoinChain(second), window);
    messages.clear();
    clipboard.LeaveChain(window, before);
    ASSERT_TRUE(home->PumpUntil([&] { return Count(kChangeChain) == 1; }));
    const Message change = *std::find_if(messages.begin(), messages.end(),
                                         [](const Message& one) { return one.message == kChangeChain; });
    EXPECT_EQ(change.window, second);
    EXPECT_EQ(change.wParam, ParameterOf(window));
    EXPECT_EQ(change.lParam, ParameterOf(before));
    clipboard.LeaveChain(second, before);
    EXPECT_EQ(clipboard.FirstViewer(), before);
}

TEST_F(ClipboardContract, Close_TellsTheOwnViewerInsideTheCallAndOnlyAfterAChange) {
    clipboard.JoinChain(window);
    EXPECT_TRUE(home->PumpUntil([&] { return Count(kDrawClipboard) == 1; }));
    messages.clear();
    OpenEmpty(window);
    EXPECT_TRUE(clipboard.Put(kText, MakeBlock("a")));
    EXPECT_EQ(Count(kDrawClipboard), 0);
    clipboard.Close();
    EXPECT_EQ(Count(kDrawClipboard), 1);
    Open(window);
    clipboard.Data(kText);
    clipboard.Close();
    EXPECT_EQ(Count(kDrawClipboard), 1);
    clipboard.LeaveChain(window, WindowHandle::None);
}

TEST_F(ClipboardContract, RegisterName_SameNameGivesTheSameNumber) {
    const FormatNumber number = clipboard.RegisterName("Contract Name");
    EXPECT_GE(number, 0xC000);
    EXPECT_LE(number, 0xFFFF);
    EXPECT_EQ(clipboard.RegisterName("CONTRACT name"), number);
    EXPECT_NE(clipboard.RegisterName("Contract Name 2"), number);
    EXPECT_EQ(clipboard.RegisteredName(number, 240), "Contract Name");
    EXPECT_EQ(clipboard.RegisteredName(number, 8), "Contract");
    const std::string umlauts = "\xC4rger \x80";
    EXPECT_EQ(clipboard.RegisteredName(clipboard.RegisterName(umlauts), 240), umlauts);
}

TEST_F(ClipboardContract, RegisteredName_OnlyRegisteredNumbersHaveOne) {
    for (const FormatNumber number : {0, 1, 17, 129, 0x200, 0xBFFF, 0x10000, -1, -16340})
        EXPECT_EQ(clipboard.RegisteredName(number, 240), std::nullopt) << number;
}
