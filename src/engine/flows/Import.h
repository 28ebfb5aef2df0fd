#pragma once

#include <string>
#include <vector>

#include "engine/flows/LongWork.h"
#include "engine/tree/NodeCollection.h"
#include "engine/tree/NodeRef.h"

// Makes a clip, the last one in the profile or folder `container`, of an ordinary file: of what is in it, or,
// where that is nothing that a clipboard holds, of the way to it. It is named after the file. The profile is
// changed and not saved. Null when that fails; nothing is left then, and `why` says it in a sentence or is
// empty when the user was told already.
Node* ImportFile(NodeCollection& nodes, Node& container, const std::wstring& path, std::wstring& why);

// The same for many files. It ends where no further clip can be made, and when the container goes.
class Import : public LongWork {
 public:
    // The nodes must live as long.
    Import(NodeCollection& nodes, Node& container, std::vector<std::wstring> paths);

    bool Step() override;
    void Stop() override { next_ = paths_.size(); }

    std::size_t Done() const override { return next_; }
    std::size_t Count() const override { return paths_.size(); }

    const std::vector<std::wstring>& Failures() const override { return failures_; }
    std::wstring Summary() const override;

 private:
    NodeCollection& nodes_;
    NodeRef container_;
    const std::vector<std::wstring> paths_;
    std::size_t next_ = 0;
    std::size_t made_ = 0;
    std::vector<std::wstring> failures_;
};
