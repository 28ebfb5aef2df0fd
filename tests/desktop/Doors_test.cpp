#include <windows.h>

#include <algorithm>
#include <functional>
#include <string>

#include "desktop/Input.h"
#include "desktop/ProgramTest.h"
#include "desktop/doors/DoorTable.h"

// An exception at each door through which the system calls the program: in this one a door throws, once, when
// the test has armed it.

namespace {

class Doors : public ProgramTest {
 protected:
    Doors() : ProgramTest(OwnDirectory() / L"NXClipThrowing.exe") {}
    void StartWithDoors() {
        StartWithProfile();
        nxclip_.SetAutoDetect(true);
        table_ = static_cast<DoorTable*>(MapViewOfFile(
            OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, DoorTableName(nxclip_.Program().Id()).c_str()),
            FILE_MAP_ALL_ACCESS, 0, 0, 0));
        ASSERT_NE(table_, nullptr);
    }
    DoorState& Arm(const std::string& door) {
        const auto end = table_->doors + table_->count;
        const auto found =
            std::find_if(table_->doors, end, [&](const DoorState& d) { return d.name == door; });
        if (found == end) throw DriverError("there is no door " + door);
        found->armed = 1;
        return *found;
    }
    void ExpectTold(const std::string& door) {
        EXPECT_EQ(Utf8(nxclip_.AnswerNotice()), "Fataler Fehler: Interner Fehler: " + door);
    }
    // Another program copies.
    void Copy(UINT format, const std::string& bytes) {
        const std::set<HTREEITEM> before = nxclip_.Items();
        PutFormats({{format, bytes}});
        nxclip_.WaitForNewClip(before);
        EXPECT_EQ(nxclip_.Items().size(), ++nodes_);
    }
    // What is copied becomes a clip and comes back as it was, and nobody has the clipboard open.
    void ExpectWorks() {
        ASSERT_TRUE(nxclip_.Quiet());
        EXPECT_TRUE(nxclip_.Main().Enabled());
        const std::string bytes = "Inhalt von " + std::to_string(nodes_);
        Copy(Private(), bytes);
        PutFormats({{Marker(), "damit es sich ändert"}});
        nxclip_.PutOnClipboard();
        EXPECT_EQ(ReadFormatNow(Private()), bytes);
        EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
        EXPECT_EQ(nxclip_.Main().Thread().hwndCapture, nullptr);
    }
    // The door throws at what `gesture` leads to, the user learns of it, and the program goes on.
    void Throw(const std::string& door, const std::function<void()>& gesture) {
        SCOPED_TRACE(door);
        const DoorState& state = Arm(door);
        gesture();
        WaitFor("an exception at " + door, [&] { return state.armed == 0; });
        ExpectTold(door);
        if (!modal_) ExpectWorks();
    }
    void DragClipToFolder() {
        BringToFront(nxclip_.Main());
        Drag(nxclip_.Tree().PlaceOf(L"Profil\\Clip"), nxclip_.Tree().PlaceOf(L"Profil\\Ordner"),
             [&] { EXPECT_TRUE(nxclip_.Quiet()) << "a box while the mouse drags"; });
    }
    // One pixel.
    static std::string Dib() {
        const BITMAPINFOHEADER header{sizeof header, 1, 1, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        return std::string(reinterpret_cast<const char*>(&header), sizeof header) + "\1\2\3\4";
    }

    DoorTable* table_ = nullptr;
    std::size_t nodes_ = 2;
    bool modal_ = false;
};

TEST_F(Doors, Exception_LeavesNoDoorAndTheProgramGoesOn) {
    StartWithDoors();
    MakeFolder(L"Ordner");
    nxclip_.Tree().Select(L"Profil");
    const Window tree = nxclip_.Tree().window();
    ExpectWorks();

    Throw("RunMessageLoop", [] {});
    Throw("frmMain::Procedure", [&] { nxclip_.Command(mnuViewRefresh); });
    Throw("HookThunk", [&] { nxclip_.Main().Send(WM_NULL); });
    Throw("Subclass::Procedure", [&] {
        EXPECT_EQ(static_cast<std::size_t>(tree.Send(TVM_GETCOUNT)), nodes_) << "the control has its message";
    });
    Throw("Splitter::Procedure", [&] {
        BringToFront(nxclip_.Main());
        const RECT bar = nxclip_.Main().Control(imgSplitter).Rectangle();
        Drag({bar.left + 2, bar.top + 50}, {bar.left + 42, bar.top + 50});
    });
    Throw("Timer::Due", [&] { nxclip_.Command(mnuViewRefresh); });  // shows another text in the status bar
    Copy(CF_DIB, Dib());
    const Window picture = WaitFor("the picture", [&] { return nxclip_.Main().FindControl(picPreviewDIB); });
    Throw("PictureBox::Procedure", [&] { InvalidateRect(picture.Handle(), nullptr, FALSE); });

    // Half filled it must not stay: what follows would not work below it.
    Throw("Dialog::Procedure", [&] { nxclip_.Command(mnuViewOptions); });
    nxclip_.Command(mnuViewOptions);
    const Window options = nxclip_.WaitForDialog(L"Optionen");
    modal_ = true;
    Throw("Filtered", [&] { options.Control(tbClipLen).Send(WM_CHAR, '7'); });
    Throw("frmOption::LookAtMessage", [&] { options.Post(WM_KEYUP, VK_SHIFT); });
    options.Press(cb_cancel);
    Driver::WaitUntilGone(options);
    modal_ = false;

    Throw("TreeDrag::Target::DragEnter", [&] { DragClipToFolder(); });
    Arm("DraggedNodeData::GetData");
    DragClipToFolder();
    // Without its data the clip is refused, which is told as well.
    const std::string refused = Utf8(nxclip_.AnswerNotice() + nxclip_.AnswerNotice());
    EXPECT_NE(refused.find("DraggedNodeData::GetData"), std::string::npos) << refused;
    ExpectWorks();
    Arm("TreeDrag::Target::DragOver");
    Arm("TreeDrag::Target::Drop");
    DragClipToFolder();
    ExpectTold("TreeDrag::Target::DragOver");
    ExpectTold("TreeDrag::Target::Drop");
    EXPECT_EQ(tree.Send(TVM_GETNEXTITEM, TVGN_DROPHILITE), 0);
    ExpectWorks();

    // What tells of an exception throws itself.
    Arm("Timer::Due");
    Arm("RunMessageLoop");
    nxclip_.Command(mnuViewRefresh);  // shows another text in the status bar, by a timer
    const std::string told = Utf8(nxclip_.AnswerNotice() + nxclip_.AnswerNotice());
    EXPECT_NE(told.find("RunMessageLoop"), std::string::npos);
    EXPECT_NE(told.find("Timer::Due"), std::string::npos);
    ExpectWorks();

    for (LONG i = 0; i < table_->count; ++i)
        EXPECT_GT(table_->doors[i].thrown, 0) << table_->doors[i].name << " was not tried";
    const std::wstring before = TreeOutline();
    // One step of the unload fails; the others are done, and the program ends.
    nxclip_.Program().MayEnd();
    table_->memoryFails = 1;
    nxclip_.Command(mnuFileClose);
    EXPECT_EQ(nxclip_.AnswerNotice(), L"Nicht genügend Speicher");
    EXPECT_EQ(nxclip_.Program().WaitForEnd(), 0u);
    nxclip_.Start();
    nxclip_.WaitForTree(before);
}

}  // namespace
