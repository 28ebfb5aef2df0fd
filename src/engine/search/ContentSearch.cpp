#include "engine/search/ContentSearch.h"

#include <algorithm>
#include <utility>

#include "engine/profiles/modProfile.h"

namespace {

using Records = std::vector<ClipFileReader::Record>;

bool Has(const Records& records, TextForm form) {
    return std::any_of(records.begin(), records.end(),
                       [=](const ClipFileReader::Record& record) { return record.content.form == form; });
}

// The system makes the poorer texts from the richer one.
bool IsToldByAnother(const Records& records, const ClipFileReader::Record& record) {
    if (record.content.form == TextForm::Oem)
        return Has(records, TextForm::Utf16) || Has(records, TextForm::Ansi);
    return record.content.form == TextForm::Ansi && record.content.kinds == kTextContent &&
           Has(records, TextForm::Utf16);
}

}  // namespace

std::wstring SearchPlan::PathOf(const ClipTarget& clip) const {
    return ClipFilePath(directories[clip.directory], clip.number);
}

ContentSearch::ContentSearch(FilePort& files, const SearchPlan& plan)
    : files_(files), plan_(plan), reader_(files), words_(plan.query, plan.likeness) {}

void ContentSearch::Run(SearchSink& sink, std::size_t from) {
    for (std::size_t clip = from; clip < plan_.clips.size() && sink.GoesOn(clip); ++clip) {
        ContentHit hit;
        const Outcome outcome = LookInto(clip, sink, hit);
        reader_.Close();
        if (outcome == Outcome::Fits) sink.Found(clip, std::move(hit));
        if (outcome == Outcome::Unreadable) sink.Unreadable(clip);
    }
}

ContentSearch::Outcome ContentSearch::LookInto(std::size_t clip, SearchSink& sink, ContentHit& hit) {
    const ClipTarget& target = plan_.clips[clip];
    path_ = plan_.PathOf(target);
    if (plan_.oldest != 0) {
        const auto time = files_.ChangeTime(path_);
        if (!time) return Outcome::Unreadable;
        if (*time < plan_.oldest) return Outcome::FitsNot;
    }
    if (!reader_.Open(path_)) return Outcome::Unreadable;
    hit.fileSize = reader_.Size();
    const Records& records = reader_.ReadRecords(target.formats);
    if (!IsOfTypes(records)) return Outcome::FitsNot;
    WordSet wanted = words_.All() & ~target.found;
    for (std::size_t i = 0; i < records.size() && wanted != 0; ++i) {
        if (records[i].content.form == TextForm::None || IsToldByAnother(records, records[i])) continue;
        if (!ReadForWords(records, i, wanted, clip, sink, hit)) return Outcome::Unreadable;
    }
    return wanted == 0 ? Outcome::Fits : Outcome::FitsNot;
}

bool ContentSearch::IsOfTypes(const Records& records) const {
    return std::all_of(plan_.query.types.begin(), plan_.query.types.end(), [&](ContentKinds kinds) {
        return std::any_of(records.begin(), records.end(), [=](const ClipFileReader::Record& record) {
            return (record.content.kinds & kinds) != 0;
        });
    });
}

// Takes out of `wanted` what the record's text holds. False when it cannot be read.
bool ContentSearch::ReadForWords(const Records& records, std::size_t index, WordSet& wanted, std::size_t clip,
                                 SearchSink& sink, ContentHit& hit) {
    const ClipFileReader::Record& record = records[index];
    const bool holdsFiles = (record.content.kinds & kFileContent) != 0;
    const WordSet here = words_.Anywhere() | (holdsFiles ? words_.OfFiles() : 0);
    return reader_.ReadText(record, words_.Overlap(), [&](const ClipFileReader::Window& window) {
        // What stands at a window's end is seen again in the next one, with what follows it.
        const std::size_t seen =
            window.text.size() - (window.last ? 0 : std::min(kMostBehindHit, window.text.size()));
        TextPlace place;
        const WordSet found = words_.FindIn(window.text.substr(0, seen), wanted & here, &place);
        if (found != 0 && hit.record < 0) {
            hit.record = static_cast<int>(index);
            hit.begin = window.begin + place.begin;
            hit.line = LineAround(window.text, place);
        }
        wanted &= ~found;
        return (wanted & here) != 0 && (window.last || sink.GoesOn(clip));
    });
}
