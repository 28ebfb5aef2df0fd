#pragma once

#include <functional>
#include <string>
#include <vector>

#include "engine/clipboard/ClipboardTest.h"
#include "engine/flows/MainWindowHost.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/modTreeEx.h"

// A main window that writes down what it is asked to do, over a real tree and real profiles.
class TestMainWindow : public MainWindowHost {
 public:
    explicit TestMainWindow(CTreeViewEx& tree) : tree_(tree) {}

    WindowHandle Window() override { return ClipboardWindow; }
    NodeCollection& Nodes() override { return *tree_.TreeView(); }
    Node* ActiveContainer() override { return activeContainer; }
    bool LockPressed() override { return locked; }
    void Later(std::chrono::milliseconds delay, std::function<void()> action) override {
        if (std::exchange(laterFails, false)) throw std::bad_alloc();
        later.push_back({delay, std::move(action)});
    }
    void SelectAndShow(Node& node) override {
        Note(L"select");
        Nodes().Select(&node);
        ThePlatform().user.Status(L"1 Element(e)");
    }
    void SetProfileChanged(Node& node) override {
        Note(L"changed");
        ::SetProfileChanged(&node);
    }
    bool SaveAllProfiles() override {
        Note(L"save");
        return ::SaveAllProfiles(tree_);
    }
    void BringToFront() override { Note(L"front"); }
    void EditClipProperties(Node&, bool unasked) override { Note(unasked ? L"show" : L"edit"); }
    void Minimise() override { Note(L"minimise"); }

    Node* activeContainer = nullptr;
    bool locked = false;
    bool laterFails = false;  // the next one does
    std::wstring done;
    // Called at every step.
    std::function<void(const std::wstring& step)> atStep;
    // What is to be done when the window is idle, with its delay.
    struct Action {
        std::chrono::milliseconds delay;
        std::function<void()> action;
    };
    std::vector<Action> later;
    // The window becomes idle: does what stands in `later`, not what that puts there.
    void BecomeIdle(FakeClock& clock) {
        for (const Action& next : std::exchange(later, {})) {
            clock.Advance(next.delay);
            next.action();
        }
    }

 private:
    void Note(const std::wstring& step) {
        done += step + L" ";
        if (atStep) atStep(step);
    }

    CTreeViewEx& tree_;
};

// One profile in C:\CLIPS with one folder, which is the active container.
class ClipFlowTest : public ClipboardTest {
 protected:
    ClipFlowTest() {
        tree.Bind(&nodes);
        profile = &nodes.Add(nullptr, NodeRelation::Last, L"Profil", std::wstring(L"Profile"));
        profile->SetTag(MakeProfileTag(0, L"C:\\CLIPS\\", false, L""));
        folder = &nodes.Add(profile, NodeRelation::Child, L"Ordner", std::wstring(L"Structure"));
        folder->SetTag(MakeStructureTag(L""));
        Profiles().Add(L"Profil", L"C:\\CLIPS\\", false, profile);
        window.activeContainer = folder;
    }

    Node& AddClip(std::int32_t number, std::int16_t formatCount) {
        Node& clip = nodes.Add(folder, NodeRelation::Child, L"Clip", std::wstring(L"Clip"));
        clip.SetTag(MakeClipTag(number, formatCount, L"15.11.1999 13:10:00", L"Notiz"));
        return clip;
    }
    std::string FileBytes(const wchar_t* path) { return fake.files.Bytes(path).value_or("<no file>"); }

    NodeCollection nodes;
    CTreeViewEx tree;
    TestMainWindow window{tree};
    Node* profile;
    Node* folder;
};
