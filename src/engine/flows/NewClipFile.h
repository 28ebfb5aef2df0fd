#pragma once

#include <cstdint>
#include <string>

#include "engine/tree/NodeCollection.h"
#include "platform/Files.h"

// How the information of a clip begins that the program could not take whole.
inline constexpr const wchar_t* kIncompleteClip = L"Der Clip ist unvollständig: ";

// The data file of a clip to come, under a number of its own in the profile of `container`. Removed again at
// the end unless it was kept.
class NewClipFile {
 public:
    // Draws the number and creates the file; a failure is told to the user. Throws RuntimeError as
    // NewClipFileName does.
    explicit NewClipFile(Node& container);
    ~NewClipFile();
    NewClipFile(const NewClipFile&) = delete;
    NewClipFile& operator=(const NewClipFile&) = delete;

    bool IsOpen() const { return handle_ != FileHandle::None; }
    FileHandle Handle() const { return handle_; }
    const std::wstring& Path() const { return path_; }
    std::int32_t Number() const { return number_; }

    // Leaves the flush to the disk to the next idle moment.
    void Close();
    // A clip leads to the file now.
    void Keep() { mustGo_ = false; }

 private:
    bool FindFreeNumber(Node& container);

    std::wstring path_;
    std::int32_t number_ = 0;
    FileHandle handle_ = FileHandle::None;
    bool mustGo_ = false;
};

// Makes the clip that leads to the file, as the last one in the profile or folder `container` that its number
// was drawn from; the folder for what is deleted stays behind it. It counts as captured when the file was
// written. Throws without leaving a node.
Node& AddClip(NodeCollection& nodes, Node& container, const NewClipFile& file, const std::wstring& name,
              std::int16_t formatCount, const std::wstring& info = {});
