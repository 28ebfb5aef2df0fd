#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/search/ClipFileReader.h"
#include "engine/search/SearchQuery.h"
#include "engine/search/WordSearch.h"
#include "platform/Files.h"

// A clip whose file is to be looked into.
struct ClipTarget {
    std::uint32_t directory = 0;  // its place in the plan
    std::int32_t number = 0;
    std::int16_t formats = 0;  // how many records its file has
    WordSet found = 0;         // the words that its name and info hold
};

// What one search reads. Made from the tree by NodeSearch.
struct SearchPlan {
    SearchQuery query;
    Likeness likeness = Likeness::Marks;
    std::vector<std::wstring> directories;
    std::vector<ClipTarget> clips;
    // A clip whose file is older is left out; 0 for no such limit.
    FileTime oldest = 0;

    std::wstring PathOf(const ClipTarget& clip) const;
};

// Where a clip holds what was asked for.
struct ContentHit {
    // The record of its file, from 0, and the place in that one's visible text; -1 when the words stand in
    // the name and the info, and the file only had to be of a kind.
    int record = -1;
    std::size_t begin = 0;
    HitLine line;
    std::int64_t fileSize = 0;
};

// Receives what a search finds while it goes on, and says whether it is to go on.
class SearchSink {
 public:
    virtual ~SearchSink() = default;
    // Before each clip of the plan, and within a long one now and then. False ends the search.
    virtual bool GoesOn(std::size_t clip) = 0;
    virtual void Found(std::size_t clip, ContentHit hit) = 0;
    // The clip's file could not be read.
    virtual void Unreadable(std::size_t clip) = 0;
};

// Looks into the files of clips. It uses nothing but the plan and the file port, so it may run in a thread of
// its own with a port of its own.
class ContentSearch {
 public:
    // Both must outlive the search.
    ContentSearch(FilePort& files, const SearchPlan& plan);

    // Looks into the plan's clips from one on, in their order.
    void Run(SearchSink& sink, std::size_t from = 0);

 private:
    enum class Outcome { Fits, FitsNot, Unreadable };
    Outcome LookInto(std::size_t clip, SearchSink& sink, ContentHit& hit);
    bool IsOfTypes(const std::vector<ClipFileReader::Record>& records) const;
    bool ReadForWords(const std::vector<ClipFileReader::Record>& records, std::size_t index, WordSet& wanted,
                      std::size_t clip, SearchSink& sink, ContentHit& hit);

    FilePort& files_;
    const SearchPlan& plan_;
    ClipFileReader reader_;
    WordSearch words_;
    std::wstring path_;
};
