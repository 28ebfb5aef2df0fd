#include "engine/search/VisibleText.h"

#include <algorithm>
#include <array>

#include "engine/clipboard/FormatNames.h"
#include "engine/search/HtmlText.h"
#include "engine/search/RtfText.h"
#include "engine/search/TextDecoder.h"

namespace {

constexpr FormatNumber kTiffFormat = 6;
constexpr FormatNumber kOemTextFormat = 7;

struct NamedContent {
    std::string_view name;
    FormatContent content;
};
constexpr std::array<NamedContent, 17> kNamed = {{
    {"HTML Format", {TextForm::Html, kHtmlContent}},
    {"text/html", {TextForm::Html, kHtmlContent}},
    {"XML Spreadsheet", {TextForm::Html, kTextContent}},
    {"Rich Text Format", {TextForm::RichText, kRichTextContent}},
    {"Rich Text Format Without Objects", {TextForm::RichText, kRichTextContent}},
    {"text/rtf", {TextForm::RichText, kRichTextContent}},
    {"text/richtext", {TextForm::RichText, kRichTextContent}},
    {"Csv", {TextForm::Ansi, kTextContent}},
    {"UTF8_STRING", {TextForm::Guessed, kTextContent}},
    {"STRING", {TextForm::Ansi, kTextContent}},
    {"UniformResourceLocator", {TextForm::Ansi, 0}},
    {"UniformResourceLocatorW", {TextForm::Utf16, 0}},
    {"DropList", {TextForm::Files, kFileContent}},
    {"FileName", {TextForm::Ansi, kFileContent}},
    {"FileNameW", {TextForm::Utf16, kFileContent}},
    {"PNG", {TextForm::None, kPictureContent}},
    {"image/svg+xml", {TextForm::Html, kPictureContent}},
}};

// A plain text, up to its first zero.
class PlainText : public VisibleText {
 public:
    explicit PlainText(TextCoding coding) : decoder_(coding) {}

    void Take(std::string_view bytes, std::u16string& text) override {
        if (ended_) return;
        const std::size_t before = text.size();
        decoder_.Take(bytes, text);
        EndAtZero(text, before);
    }
    void End(std::u16string& text) override {
        if (ended_) return;
        const std::size_t before = text.size();
        decoder_.End(text);
        EndAtZero(text, before);
    }
    bool Ended() const override { return ended_; }

 private:
    void EndAtZero(std::u16string& text, std::size_t before) {
        const std::size_t zero = FirstZero(text, before);
        if (zero == text.size()) return;
        text.resize(zero);
        ended_ = true;
    }

    TextDecoder decoder_;
    bool ended_ = false;
};

// The names of a list of dropped files, a line each. In front of them stands where they begin, and whether
// they are Unicode.
class FileNames : public VisibleText {
 public:
    void Take(std::string_view bytes, std::u16string& text) override {
        if (ended_) return;
        if (header_.size() < kHeaderSize) {
            const std::size_t more = std::min(kHeaderSize - header_.size(), bytes.size());
            header_ += bytes.substr(0, more);
            bytes.remove_prefix(more);
            if (header_.size() < kHeaderSize) return;
            const std::uint32_t begin = NumberAt(0);
            skipped_ = begin > kHeaderSize ? begin - kHeaderSize : 0;
            if (NumberAt(16) == 0) decoder_ = TextDecoder(TextCoding::Ansi);
        }
        const std::size_t skipped = std::min(skipped_, bytes.size());
        skipped_ -= skipped;
        const std::size_t before = text.size();
        decoder_.Take(bytes.substr(skipped), text);
        EndNames(text, before);
    }
    void End(std::u16string& text) override {
        if (ended_) return;
        const std::size_t before = text.size();
        decoder_.End(text);
        EndNames(text, before);
    }
    bool Ended() const override { return ended_; }

 private:
    static constexpr std::size_t kHeaderSize = 20;

    std::uint32_t NumberAt(std::size_t place) const {
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < 4; ++i)
            number |= static_cast<std::uint32_t>(static_cast<unsigned char>(header_[place + i])) << 8 * i;
        return number;
    }
    // A name ends with a zero, the list with two.
    void EndNames(std::u16string& text, std::size_t before) {
        for (std::size_t i = before; i < text.size(); ++i) {
            const bool ends = text[i] == 0;
            if (ends && afterName_) {
                text.resize(i);
                ended_ = true;
                return;
            }
            if (ends) text[i] = u'\n';
            afterName_ = ends;
        }
    }

    std::string header_;
    std::size_t skipped_ = 0;
    TextDecoder decoder_{TextCoding::Utf16};
    bool afterName_ = true;
    bool ended_ = false;
};

template <typename Reader>
class Adapted : public VisibleText {
 public:
    void Take(std::string_view bytes, std::u16string& text) override { reader_.Take(bytes, text); }
    void End(std::u16string& text) override { reader_.End(text); }
    bool Ended() const override { return reader_.Ended(); }

 private:
    Reader reader_;
};

FormatContent ContentOfNumber(FormatNumber id) {
    switch (id) {
        case kTextFormat:
            return {TextForm::Ansi, kTextContent};
        case kOemTextFormat:
            return {TextForm::Oem, kTextContent};
        case kUnicodeFormat:
            return {TextForm::Utf16, kTextContent};
        case kFilesFormat:
            return {TextForm::Files, kFileContent};
        case kBitmapFormat:
        case kMetafilePictureFormat:
        case kTiffFormat:
        case kDibFormat:
        case kEnhancedMetafileFormat:
        case kDibV5Format:
            return {TextForm::None, kPictureContent};
        default:
            return {};
    }
}

}  // namespace

FormatContent ContentOfFormat(FormatNumber id, std::string_view name) {
    constexpr FormatNumber kFirstRegistered = 0xC000;
    if (id < kFirstRegistered) return ContentOfNumber(id);
    const auto known =
        std::find_if(kNamed.begin(), kNamed.end(), [=](const NamedContent& one) { return one.name == name; });
    if (known != kNamed.end()) return known->content;
    if (name.starts_with("text/")) return {TextForm::Guessed, kTextContent};
    if (name.starts_with("image/")) return {TextForm::None, kPictureContent};
    return {};
}

std::unique_ptr<VisibleText> VisibleText::Of(TextForm form) {
    switch (form) {
        case TextForm::Html:
            return std::make_unique<Adapted<HtmlText>>();
        case TextForm::RichText:
            return std::make_unique<Adapted<RtfText>>();
        case TextForm::Files:
            return std::make_unique<FileNames>();
        case TextForm::Utf16:
            return std::make_unique<PlainText>(TextCoding::Utf16);
        case TextForm::Oem:
            return std::make_unique<PlainText>(TextCoding::Oem);
        case TextForm::Guessed:
            return std::make_unique<PlainText>(TextCoding::Guessed);
        default:
            return std::make_unique<PlainText>(TextCoding::Ansi);
    }
}
