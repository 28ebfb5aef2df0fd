#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/clipboard/OrdinaryFile.h"

// A clip on the page, with the files that were made of it.
struct ExportedClip {
    struct File {
        OrdinaryKind kind;
        std::wstring path;  // from the page's directory on, its parts separated by "/"
    };
    std::wstring name;
    std::wstring info;
    std::wstring captured;
    std::wstring beginning;  // of its text
    std::vector<File> files;
};

// The page that shows what was exported, built from top to bottom. It asks nothing of other places and runs
// nothing.
class ExportIndex {
 public:
    // Everything that was opened before is closed.
    void Begin(const std::wstring& title);
    void OpenFolder(const std::wstring& name, const std::wstring& info);
    void CloseFolder();
    void Add(const ExportedClip& clip);
    // The whole page in UTF-8; `stopped` says on it that there was more.
    std::vector<std::uint8_t> Finish(bool stopped);

    bool IsOpen() const { return open_; }

 private:
    void ShowClips(bool on);
    std::string Summary() const;

    std::string body_;
    std::wstring title_;
    int folders_ = 0;  // that are open
    int allFolders_ = 0;
    int clips_ = 0;
    bool inClips_ = false;
    bool open_ = false;
};
