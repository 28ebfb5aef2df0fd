#include "engine/flows/SnapFlow.h"

#include "engine/flows/SnapTest.h"
#include "platform/Busy.h"

namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

}  // namespace

TEST_F(SnapTest, Snap_StoresTheKeptFormatsOfAnUnknownContent) {
    Copy({FakeClipboard::Bytes(13, "unicode"), FakeClipboard::Bytes(1, std::string("text\0", 5)),
          FakeClipboard::GdiObject(2), FakeClipboard::Bytes(8, "dib")});
    flow.Snap();

    ASSERT_NE(LastClip(), nullptr);
    EXPECT_EQ(LastClip()->Text(), L"Clip");
    EXPECT_EQ(LastClip()->Image(), ImageValue(std::wstring(L"Clip")));
    EXPECT_EQ(LastClip()->Tag(), L"C&1,2&15.11.1999 13:10:00&");
    EXPECT_EQ(FileBytes(L"C:\\CLIPS\\C1.nxc"),
              RecordBytes(1, "Text", std::string("text\0", 5)) + RecordBytes(8, "DIB", "dib"));
    EXPECT_EQ(profile->Tag(), L"P&1&C:\\CLIPS\\&0&");
    EXPECT_EQ(nodes.Selected(), LastClip());
    EXPECT_FALSE(Profiles().Item(1).Dirty);
    EXPECT_EQ(fake.user.statuses, (std::vector<std::wstring>{L"Sichern Format 'Text'",
                                                             L"Sichern Format 'DIB'", L"1 Element(e)"}));
    EXPECT_TRUE(fake.user.messages.empty());
    // What is not kept was never asked for.
    EXPECT_EQ(fake.failures.Calls(Operation::ClipboardData), 2);
}

TEST_F(SnapTest, Snap_FollowsAMatchingFormatSetInWhateverOrderTheFormatsCome) {
    AddSet(L"Notiz", {{L"Text", true}, {L"DIB", false}, {L"Unicode", true}});
    Copy({FakeClipboard::Bytes(13, "unicod\0\0"s), FakeClipboard::Bytes(8, "dib"),
          FakeClipboard::Bytes(1, "text\0"s)});
    flow.Snap();
    EXPECT_EQ(LastClip()->Text(), L"Notiz");
    EXPECT_EQ(StoredData(*LastClip()), (std::vector<std::string>{"unicod\0\0"s, "text\0"s}));

    // One format more: the set does not match.
    Options().UnknownSet = L"Fremd";
    Copy({FakeClipboard::Bytes(13, "unicod\0\0"s), FakeClipboard::Bytes(8, "dib"),
          FakeClipboard::Bytes(1, "text\0"s), FakeClipboard::Bytes(7, "oem")});
    flow.Snap();
    EXPECT_EQ(LastClip()->Text(), L"Fremd");
    EXPECT_EQ(StoredData(*LastClip()), (std::vector<std::string>{"dib", "text\0"s}));
}

TEST_F(SnapTest, Snap_StopsWithoutAWordWhereNothingIsToBeTaken) {
    const auto takesNothing = [&] {
        const int before = nodes.Count();
        flow.Snap();
        return nodes.Count() == before && !fake.clipboard.IsOpen() && fake.user.messages.empty() &&
               fake.user.pointer == PointerShape::Normal && fake.files.AllFiles().empty();
    };
    EXPECT_TRUE(takesNothing());  // an empty clipboard

    CopyText("text");
    window.locked = true;
    EXPECT_TRUE(takesNothing());
    window.locked = false;
    Options().ActionUnknownSet = 0;
    EXPECT_TRUE(takesNothing());
    Options().ActionUnknownSet = 2;
    EXPECT_TRUE(takesNothing());
    Options().ActionUnknownSet = 1;

    {
        const BusyScope dialog(Busy::Dialog);
        flow.UpdateClipBoard();
        EXPECT_EQ(LastClip(), nullptr);
    }
    {
        const BusyScope operation(Busy::TreeOperation);
        EXPECT_TRUE(takesNothing()) << "on command neither";
    }

    Copy({FakeClipboard::Bytes(1, "own"), FakeClipboard::Bytes(OwnMarkerFormat, "mark")});
    const std::wstring tag = profile->Tag();
    EXPECT_TRUE(takesNothing());
    EXPECT_EQ(profile->Tag(), tag);  // no number is used up
}

TEST_F(SnapTest, Snap_NeedsAnActiveContainer) {
    CopyText("text");
    window.activeContainer = nullptr;
    // Clipboard changes that come while the message stands must not pile up messages.
    fake.user.duringMessage = [&] { flow.UpdateClipBoard(); };
    flow.Snap();
    EXPECT_EQ(fake.user.messages.size(), 1u);

    fake.user.duringMessage = nullptr;
    window.activeContainer = folder;
    flow.UpdateClipBoard();
    EXPECT_NE(LastClip(), nullptr);
}

TEST_F(SnapTest, Snap_DoesEverythingInItsOrder) {
    Options().SnapSound = true;
    Options().SoundFile = L"C:\\fehlt.wav";  // a beep instead
    Options().EditPropAfterSnap = true;
    Options().IconAfterSnap = true;
    CopyText("text");
    PreviousForeground = fake.clipboard.otherProgram;
    fake.windows.foreground = ClipboardWindow;
    window.atStep = [&](const std::wstring& step) {
        EXPECT_FALSE(fake.clipboard.IsOpen());
        EXPECT_EQ(fake.ledger.Owned(ResourceKind::File), 0);
        EXPECT_FALSE(LastClip()->Tag().empty());
        EXPECT_EQ(fake.user.pointer, PointerShape::Hourglass);
        EXPECT_EQ(fake.user.beeps, step == L"front" || step == L"edit" || step == L"minimise" ? 1 : 0);
        EXPECT_EQ(PreviousForeground, fake.clipboard.otherProgram);
    };
    flow.Snap();
    EXPECT_EQ(window.done, L"changed save select front edit minimise ");
    EXPECT_EQ(fake.windows.foreground, fake.clipboard.otherProgram);
    EXPECT_EQ(PreviousForeground, WindowHandle::None);
    EXPECT_EQ(fake.user.pointer, PointerShape::Normal);
    EXPECT_EQ(flow.LastUpdate(), fake.clock.now);
}

TEST_F(SnapTest, Snap_NamesTheClipAfterItsText) {
    Options().NewtextMode = 1;
    Options().NewMaxLen = 20;
    const auto nameOf = [&](const std::string& text) {
        CopyText(text);
        flow.Snap();
        return LastClip()->Text();
    };
    EXPECT_EQ(nameOf("Sehr geehrte Damen und Herren"), L"Sehr geehrte Damen u");
    EXPECT_EQ(nameOf("\r\n\t "), L"Clip");
    EXPECT_EQ(nameOf("  Punkt\r\n\r\n\tStrich\r\n"), L"Punkt Strich");
    // All of a text of any length was asked for: the name still has to fit into the tree data file.
    Options().NewMaxLen = 0;
    EXPECT_EQ(nameOf(std::string(100'000, 'x')), std::wstring(999, L'x'));
    Options().NewtextMode = 0;
    EXPECT_EQ(nameOf("kurz"), L"Clip");
}

TEST_F(SnapTest, Snap_NamesTheClipInTheUsersLetters) {
    Options().NewtextMode = 1;
    const auto nameOf = [&](const std::string& ansi, const std::string& utf16) {
        const auto text = FakeClipboard::Bytes(1, ansi + "\0"s);
        const auto unicode = FakeClipboard::Bytes(13, utf16 + "\0\0"s);
        Copy({text, unicode, FakeClipboard::Bytes(8, "dib")});
        flow.Snap();
        const std::wstring name = LastClip()->Text();
        Copy({unicode, text, FakeClipboard::Bytes(8, "dib")});
        flow.Snap();
        EXPECT_EQ(LastClip()->Text(), name) << "in whatever order they come";
        return name;
    };
    const std::string smile("\x3D\xD8\0\xDE", 4), gruss("G\0r\0\xFC\0", 6);
    // The clip holds no "Unicode".
    EXPECT_EQ(nameOf("Gr\xFC ??", gruss), L"Grü ??");
    Options().UnknownFormats = 255;
    EXPECT_EQ(nameOf("Gr\xFC ??", smile + gruss + " \0"s + smile), L"Grü");
    EXPECT_EQ(nameOf("??", smile), L"Clip") << "nothing is left of it";
    Options().NewMaxLen = 2;
    EXPECT_EQ(nameOf("???", smile + gruss), L"Gr");
}

TEST_F(SnapTest, Snap_OfConfidentialContent_AsksOnCommandAndIsNotTakenUnasked) {
    const auto copySecret = [&] {
        Copy({FakeClipboard::Bytes(1, "geheim\0"s),
              FakeClipboard::Bytes(Registered("ExcludeClipboardContentFromMonitorProcessing"), "x")});
        fake.clock.Advance(1s);
    };
    copySecret();
    flow.UpdateClipBoard();
    EXPECT_EQ(LastClip(), nullptr);
    EXPECT_EQ(fake.user.LastStatus(), L"Vertraulicher Inhalt nicht erfasst");
    EXPECT_TRUE(fake.files.AllFiles().empty());

    fake.user.answers = {false, true};
    flow.Snap();
    EXPECT_EQ(LastClip(), nullptr);
    flow.Snap();
    ASSERT_NE(LastClip(), nullptr);
    EXPECT_EQ(StoredData(*LastClip()), std::vector<std::string>{"geheim\0"s});
    EXPECT_EQ(fake.user.questions.size(), 2u) << "one question each";

    // Another secret under the question is asked about by itself.
    fake.user.answers = {true, false};
    fake.user.duringMessage = [&] {
        fake.user.duringMessage = nullptr;
        copySecret();
    };
    flow.Snap();
    EXPECT_EQ(folder->Children(), 1);
    EXPECT_EQ(fake.user.questions.size(), 4u);

    Options().SkipPrivate = false;
    copySecret();
    flow.UpdateClipBoard();
    EXPECT_EQ(folder->Children(), 2);
}

TEST_F(SnapTest, Snap_SaysWhyNoFormatWasKept) {
    const auto kept = [&](const Offers& offers, bool unasked) {
        Copy(offers);
        fake.clock.Advance(1s);
        unasked ? flow.UpdateClipBoard() : flow.Snap();
        return fake.user.LastStatus();
    };
    // Unasked it takes back what it made, at a command the empty clip stays.
    const std::wstring refused = kept({FakeClipboard::Refused(1)}, true);
    EXPECT_NE(kept({FakeClipboard::Bytes(13, "u\0\0\0"s)}, true), refused);
    fake.FailNth(Operation::FilesWrite, 1);
    EXPECT_EQ(kept({FakeClipboard::Bytes(1, "text")}, true).find(L"Kein Format gesichert: Der Datentr"), 0u);
    EXPECT_EQ(LastClip(), nullptr);
    EXPECT_TRUE(fake.files.AllFiles().empty());
    EXPECT_TRUE(window.later.empty());

    // A program that has cleared the clipboard.
    Options().UnknownFormats = 255;
    for (const Offers& nothing : {Offers{FakeClipboard::Bytes(16, "\7\4\0\0"s)},
                                  Offers{FakeClipboard::Bytes(1, "\0"s), FakeClipboard::Bytes(7, "\0"s)}})
        EXPECT_EQ(kept(nothing, true), L"Kein Format gesichert: Der Inhalt ist leer.");
    EXPECT_EQ(LastClip(), nullptr);

    EXPECT_EQ(kept({FakeClipboard::Refused(1)}, false), refused);
    EXPECT_EQ(LastClip()->Tag(), L"C&6,0&15.11.1999 13:10:06&");
    EXPECT_EQ(FileBytes(L"C:\\CLIPS\\C6.nxc"), "");
}

TEST_F(SnapTest, MoreMayFollow_UntilAllIsQuietOrForTooLong) {
    Options().AutoSnap = true;
    EXPECT_FALSE(flow.MoreMayFollow());
    for (fake.clock.Advance(1s); flow.CopyTold(), flow.MoreMayFollow(); fake.clock.Advance(1s))
        CopyText("x");
    EXPECT_EQ(folder->Children(), 0);
    while (!window.later.empty())
        window.BecomeIdle(fake.clock);
    flow.CopyTold();
    EXPECT_TRUE(flow.MoreMayFollow());
    window.BecomeIdle(fake.clock);
    window.BecomeIdle(fake.clock);
    EXPECT_FALSE(flow.MoreMayFollow());
}

TEST_F(SnapTest, Snap_SurvivesWhatIsSentWhileTheOwnerRenders) {
    const auto meanwhile = [&](const std::function<void()>& act) {
        const auto make = FakeClipboard::Bytes(1, "text\0"s).make;
        Copy({{1,
               [act, make](FakeClipboard& clipboard) {
                   act();
                   return make(clipboard);
               },
               true}});
        flow.Snap();
    };
    meanwhile([&] { EXPECT_TRUE(Is(Busy::Capture)); });
    EXPECT_EQ(folder->Children(), 1);
    Node& other = nodes.Add(profile, NodeRelation::Child, L"Zwei", std::wstring(L"Structure"));
    other.SetTag(MakeStructureTag(L""));
    // The container goes, another one of the profile takes its place.
    meanwhile([&] {
        nodes.Remove(*folder);
        window.activeContainer = &other;
    });
    EXPECT_EQ(other.Children(), 1);
    meanwhile([&] { window.activeContainer = nullptr; });
    EXPECT_TRUE(fake.user.LastStatus().starts_with(L"Eine Kopie wurde nicht erfasst: Der Ordner"));
    window.activeContainer = &other;
    meanwhile([&] { flow.Abandon(); });
    EXPECT_EQ(other.Children(), 1);
    EXPECT_FALSE(fake.files.Has(L"C:\\CLIPS\\C4.nxc"));
}

TEST_F(SnapTest, Snap_NeverOverwritesAnExistingClipFile) {
    // The counter is behind the files when a profile could not be saved in an earlier run.
    fake.files.SetBytes(L"C:\\CLIPS\\C1.nxc", "old 1");
    fake.files.SetBytes(L"C:\\CLIPS\\C2.nxc", "old 2");
    CopyText("text");
    flow.Snap();
    EXPECT_EQ(FileBytes(L"C:\\CLIPS\\C1.nxc"), "old 1");
    EXPECT_EQ(FileBytes(L"C:\\CLIPS\\C2.nxc"), "old 2");
    EXPECT_EQ(ClipFileOf(LastClip()), L"C:\\CLIPS\\C3.nxc");
    EXPECT_EQ(profile->Tag(), L"P&3&C:\\CLIPS\\&0&");
}

TEST_F(SnapTest, Snap_OnAFullDiskKeepsWhatFitsReadable) {
    Options().UnknownFormats = 255;
    Copy({FakeClipboard::Bytes(13, "firs\0\0"s), FakeClipboard::Bytes(8, std::string(5000, 'd')),
          FakeClipboard::Bytes(1, std::string("text\0", 5))});
    fake.files.capacity = 2000;
    flow.Snap();
    // The beginning of the picture's record does not stand in the way of the text's.
    EXPECT_EQ(StoredData(*LastClip()), (std::vector<std::string>{"firs\0\0"s, "text\0"s}));
    EXPECT_EQ(fake.user.LastStatus().find(L"Der Clip ist unvollständig: "), 0u);
}

TEST_F(SnapTest, Snap_WithAnyOperationFailingLosesNothingThatWasThere) {
    Options().UnknownFormats = 255;
    Options().NewtextMode = 1;
    CopyText("first");
    flow.Snap();
    const std::string firstClip = FileBytes(L"C:\\CLIPS\\C1.nxc");
    const std::vector<std::string> whole = {"unicod\0\0"s, MetafileBitsWith("picture"),
                                            std::string(3000, 'd'), EnhancedMetafileBitsWith("picture"),
                                            std::string("text\0", 5)};
    Copy({FakeClipboard::Bytes(13, whole[0]), FakeClipboard::Picture(whole[1]),
          FakeClipboard::Late(FakeClipboard::Bytes(8, whole[2])), FakeClipboard::Enhanced(whole[3]),
          FakeClipboard::Bytes(1, whole[4] + "junk")});

    for (const auto failure : {WriteFailure::DiskFullWithPart, WriteFailure::Nothing, WriteFailure::Short}) {
        fake.failures.writeFailure = failure;
        for (int n = 1;; ++n) {
            SCOPED_TRACE(n);
            const int nodesBefore = nodes.Count();
            fake.user.statuses.clear();
            fake.FailNthOfAny(n);
            flow.Snap();
            const bool failed = fake.Fired();
            fake.failures.FailNone();

            EXPECT_FALSE(fake.clipboard.IsOpen());
            EXPECT_EQ(fake.ledger.Owned(ResourceKind::File), 0);
            EXPECT_EQ(fake.user.pointer, PointerShape::Normal);
            EXPECT_EQ(FileBytes(L"C:\\CLIPS\\C1.nxc"), firstClip);
            if (nodes.Count() == nodesBefore) {
                ASSERT_TRUE(failed);
                EXPECT_FALSE(fake.user.statuses.empty());
                continue;
            }
            // Whatever was counted is the content's, in its order.
            auto expected = whole.begin();
            for (const std::string& data : StoredData(*LastClip())) {
                expected = std::find(expected, whole.end(), data);
                ASSERT_NE(expected, whole.end());
                ++expected;
            }
            if (failed) continue;
            EXPECT_EQ(StoredData(*LastClip()), whole);
            break;
        }
    }
    // The tree on disk is the tree on the screen.
    CTreeViewEx reloaded;
    NodeCollection reloadedNodes;
    reloaded.Bind(&reloadedNodes);
    ProfileFile file = ProfileFile::WithoutLock(L"C:\\CLIPS\\");
    ASSERT_NE(LoadProfile(reloaded, file), nullptr);
    EXPECT_EQ(reloadedNodes.Count(), nodes.Count());
}

TEST(ClipName, ClipNameOfText_IsOneReadableLine) {
    EXPECT_EQ(ClipNameOfText(std::wstring(L"abc\0def", 7)), L"abc");
    EXPECT_EQ(ClipNameOfText(std::wstring(L"\0", 1)), L"");
    EXPECT_EQ(ClipNameOfText(L"a\r\nb\x85"
                             L"c\x7F"),
              L"a b c");
    EXPECT_EQ(ClipNameOfText(L"a  b"), L"a  b");
    EXPECT_EQ(ClipNameOfText(std::wstring(998, L'x') + L" y"), std::wstring(998, L'x'));
}
