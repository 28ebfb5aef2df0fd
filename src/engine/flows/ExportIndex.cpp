#include "engine/flows/ExportIndex.h"

#include <string_view>
#include <utility>

#include "platform/Text.h"

namespace {

// Of a text the page shows no more than this.
constexpr std::size_t kMostLetters = 400;

constexpr std::string_view kStyle =
    "body{font:15px/1.45 system-ui,sans-serif;margin:2em auto;max-width:60em;padding:0 1em;color:#222;"
    "background:#fafafa}"
    "h1{font-size:1.6em;margin:0 0 .6em}"
    "details{margin:.4em 0 .4em .2em;padding-left:.8em;border-left:2px solid #d5dbe3}"
    "summary{cursor:pointer;font-weight:600;padding:.15em 0}"
    "article{background:#fff;border:1px solid #e2e5ea;border-radius:6px;margin:.5em 0;padding:.6em .9em}"
    "h2{font-size:1em;margin:0;display:inline}"
    ".when,.info{color:#667;font-size:.88em;margin-left:.7em}"
    "pre{white-space:pre-wrap;overflow-wrap:anywhere;margin:.4em 0;max-height:8em;overflow:hidden;"
    "background:#f5f6f8;padding:.4em .6em}"
    "img{max-width:100%;max-height:14em;display:block;margin:.4em 0}"
    ".files a{margin-right:1em;font-size:.9em}"
    ".none{color:#99a;font-size:.9em}";

std::string Escaped(const std::wstring& text) {
    std::string html;
    for (const char c : Utf8FromText(text)) {
        const auto code = static_cast<std::uint8_t>(c);
        if (c == '<')
            html += "&lt;";
        else if (c == '>')
            html += "&gt;";
        else if (c == '&')
            html += "&amp;";
        else if (c == '"')
            html += "&quot;";
        else if (code >= 0x20 || c == '\n' || c == '\t')
            html += c;
    }
    return html;
}

// A path as the target of a link.
std::string Linked(const std::wstring& path) {
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.~/";
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string link;
    for (const char c : Utf8FromText(path)) {
        const auto code = static_cast<std::uint8_t>(c);
        if (kPlain.find(c) != std::string_view::npos)
            link += c;
        else
            link += {'%', kDigits[code >> 4], kDigits[code & 15]};
    }
    return link;
}

std::string Note(std::string_view kind, const std::wstring& text) {
    return text.empty() ? std::string()
                        : "<span class=\"" + std::string(kind) + "\">" + Escaped(text) + "</span>";
}

// No browser shows the rest.
bool IsShown(const std::wstring& path) {
    for (const wchar_t* extension : {L".png", L".bmp", L".jpg", L".gif", L".svg"})
        if (path.ends_with(extension)) return true;
    return false;
}

}  // namespace

void ExportIndex::Begin(const std::wstring& title) {
    body_.clear();
    title_ = title;
    folders_ = 0;
    open_ = true;
}

void ExportIndex::OpenFolder(const std::wstring& name, const std::wstring& info) {
    body_ += "<details open><summary>" + Escaped(name) + Note("info", info) + "</summary>\n";
    ++folders_;
}

void ExportIndex::CloseFolder() {
    body_ += "</details>\n";
    --folders_;
}

void ExportIndex::Add(const ExportedClip& clip) {
    body_ += "<article><h2>" + Escaped(clip.name) + "</h2>" + Note("when", clip.captured) +
             Note("info", clip.info) + "\n";
    for (const ExportedClip::File& file : clip.files) {
        if (IsShown(file.path))
            body_ += "<img loading=\"lazy\" src=\"" + Linked(file.path) + "\" alt=\"" + Escaped(clip.name) +
                     "\">\n";
    }
    if (!clip.beginning.empty()) {
        const bool cut = clip.beginning.size() > kMostLetters;
        body_ += "<pre>" + Escaped(clip.beginning.substr(0, kMostLetters)) + (cut ? " …" : "") + "</pre>\n";
    }
    body_ += "<div class=\"files\">";
    for (const ExportedClip::File& file : clip.files)
        body_ += "<a href=\"" + Linked(file.path) + "\">" + Escaped(file.label) + "</a>";
    if (clip.files.empty())
        body_ += "<span class=\"none\">kein Format, das in einer Datei stehen kann</span>";
    body_ += "</div></article>\n";
}

std::vector<std::uint8_t> ExportIndex::Finish(bool stopped) {
    while (folders_ > 0)
        CloseFolder();
    open_ = false;
    std::string page = "<!DOCTYPE html>\n<html lang=\"de\"><head><meta charset=\"utf-8\"><title>";
    page += Escaped(title_) + "</title><style>" + std::string(kStyle) + "</style></head><body>\n<h1>";
    page += Escaped(title_) + "</h1>\n" + std::exchange(body_, {});
    if (stopped) page += "<p>Der Export wurde hier beendet; es gab noch mehr.</p>\n";
    page += "</body></html>\n";
    return {page.begin(), page.end()};
}
