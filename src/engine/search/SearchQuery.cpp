#include "engine/search/SearchQuery.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/Text.h"

namespace {

constexpr int kMostDays = 36500;

// A word of the text as it is typed: what stands in front of its colon, what behind.
struct Term {
    std::wstring key;  // in lower case, empty for none
    std::wstring value;
    bool quoted = false;
};

bool IsBlank(wchar_t character) {
    return character == L' ' || character == L'\t' || character == L'\r' || character == L'\n';
}

constexpr std::array<const wchar_t*, 4> kKeys = {L"name", L"datei", L"typ", L"seit"};

std::wstring KeyBefore(std::wstring_view colon) {
    const std::wstring key = LowerCase(colon);
    const bool known =
        std::any_of(kKeys.begin(), kKeys.end(), [&](const wchar_t* one) { return key == one; });
    return known ? key : std::wstring();
}

// Takes the next word off the text.
Term NextTerm(std::wstring_view& text) {
    Term term;
    const std::size_t end =
        std::min(static_cast<std::size_t>(std::find_if(text.begin(), text.end(), IsBlank) - text.begin()),
                 text.size());
    if (const std::size_t colon = text.substr(0, end).find(L':'); colon != std::wstring_view::npos)
        term.key = KeyBefore(text.substr(0, colon));
    if (!term.key.empty()) text.remove_prefix(term.key.size() + 1);
    if (text.starts_with(L'"')) {
        text.remove_prefix(1);
        term.quoted = true;
        const std::size_t quote = std::min(text.find(L'"'), text.size());
        term.value = text.substr(0, quote);
        text.remove_prefix(std::min(quote + 1, text.size()));
    } else {
        const auto blank = std::find_if(text.begin(), text.end(), IsBlank);
        term.value.assign(text.begin(), blank);
        text.remove_prefix(static_cast<std::size_t>(blank - text.begin()));
    }
    return term;
}

struct NamedKind {
    const wchar_t* name;
    ContentKind kind;
};
constexpr std::array<NamedKind, 5> kKinds = {{{L"bild", kPictureContent},
                                              {L"text", kTextContent},
                                              {L"html", kHtmlContent},
                                              {L"rtf", kRichTextContent},
                                              {L"datei", kFileContent}}};

// Kinds with "|" between them. While one is typed its beginning is enough.
std::optional<ContentKinds> KindsNamed(std::wstring_view names) {
    ContentKinds kinds = 0;
    while (!names.empty()) {
        const std::size_t bar = std::min(names.find(L'|'), names.size());
        const std::wstring_view name = names.substr(0, bar);
        names.remove_prefix(std::min(bar + 1, names.size()));
        if (name.empty()) continue;
        const auto kind = std::find_if(kKinds.begin(), kKinds.end(), [&](const NamedKind& one) {
            return BeginsWithNoCase(one.name, name);
        });
        if (kind == kKinds.end()) return std::nullopt;
        kinds = static_cast<ContentKinds>(kinds | kind->kind);
    }
    return kinds;
}

void AddTypes(SearchQuery& query, const std::wstring& names) {
    const auto kinds = KindsNamed(names);
    if (!kinds)
        query.problem = L"typ: kennt bild, text, html, rtf und datei.";
    else if (*kinds != 0)
        query.types.push_back(*kinds);
}

void SetDays(SearchQuery& query, const std::wstring& number) {
    if (number.empty()) return;
    const auto days = ParseInt32(number);
    if (days && *days >= 0 && *days <= kMostDays)
        query.days = std::min(query.days.value_or(kMostDays), static_cast<int>(*days));
    else
        query.problem = L"seit: nimmt eine Anzahl von Tagen.";
}

void AddWord(SearchQuery& query, const Term& term) {
    if (term.value.empty()) return;
    SearchWord word;
    word.text = Utf16FromText(term.value);
    word.exact = term.quoted;
    if (term.key == L"name") word.place = SearchWord::Place::Name;
    if (term.key == L"datei") word.place = SearchWord::Place::Files;
    if (query.words.size() == SearchQuery::kMostWords)
        query.problem = L"Gesucht werden höchstens " + NumberText(SearchQuery::kMostWords) + L" Wörter.";
    else
        query.words.push_back(std::move(word));
}

}  // namespace

bool SearchQuery::NeedsFile() const {
    return !types.empty() || days || std::any_of(words.begin(), words.end(), [](const SearchWord& word) {
        return word.place == SearchWord::Place::Files;
    });
}

bool SearchQuery::IsOfPlainWords() const {
    return problem.empty() && !NeedsFile() && std::none_of(words.begin(), words.end(), [](const auto& word) {
               return std::any_of(word.text.begin(), word.text.end(),
                                  [](char16_t unit) { return unit <= u' '; });
           });
}

bool SearchQuery::Narrows(const SearchQuery& other) const {
    const auto narrows = [](const SearchWord& shorter, const SearchWord& longer) {
        return shorter.place == longer.place && shorter.exact == longer.exact &&
               longer.text.starts_with(shorter.text);
    };
    return problem.empty() && other.problem.empty() && types == other.types && days == other.days &&
           words.size() >= other.words.size() &&
           std::equal(other.words.begin(), other.words.end(), words.begin(), narrows);
}

SearchQuery ParseSearchQuery(std::wstring_view text) {
    SearchQuery query;
    for (;;) {
        while (!text.empty() && IsBlank(text.front()))
            text.remove_prefix(1);
        if (text.empty()) return query;
        const Term term = NextTerm(text);
        if (term.key == L"typ")
            AddTypes(query, term.value);
        else if (term.key == L"seit")
            SetDays(query, term.value);
        else
            AddWord(query, term);
    }
}
