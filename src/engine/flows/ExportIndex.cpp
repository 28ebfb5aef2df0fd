#include "engine/flows/ExportIndex.h"

#include <string_view>
#include <utility>

#include "platform/Text.h"

namespace {

// The page shows no more than this of a text.
constexpr std::size_t kMostLetters = 400;

constexpr std::string_view kStyle =
    ":root{color-scheme:light dark;--page:#f3f5f8;--card:#fff;--line:#dde2ea;--text:#1f2530;--soft:#647084;"
    "--mark:#1b6ac9;--well:#f6f8fa}"
    "@media(prefers-color-scheme:dark){:root{--page:#15181d;--card:#1e232a;--line:#323a45;--text:#e3e7ed;"
    "--soft:#98a3b3;--mark:#7db4f5;--well:#181c22}}"
    "*{box-sizing:border-box}"
    "body{font:15px/1.5 \"Segoe UI\",system-ui,sans-serif;margin:0 auto;max-width:76em;padding:2em 1.5em 4em;"
    "color:var(--text);background:var(--page)}"
    "header{border-bottom:3px solid var(--mark);padding-bottom:.7em;margin-bottom:1.4em}"
    "h1{font-size:1.9em;font-weight:600;margin:0}"
    ".sum,.info,.when{color:var(--soft);font-size:.9em}"
    "details{margin:.9em 0}"
    "details details{margin-left:1.1em}"
    "summary{cursor:pointer;font-size:1.1em;font-weight:600;padding:.2em 0}"
    "summary .info{font-weight:400;margin-left:.8em}"
    ".clips{display:grid;grid-template-columns:repeat(auto-fill,minmax(20em,1fr));gap:.8em;margin:.6em 0}"
    "article{background:var(--card);border:1px solid var(--line);border-radius:8px;padding:.8em 1em;"
    "display:flex;flex-direction:column;gap:.45em;min-width:0}"
    "h2{font-size:1em;font-weight:600;margin:0;overflow-wrap:anywhere}"
    "pre{font:.87em/1.45 "
    "Consolas,ui-monospace,monospace;white-space:pre-wrap;overflow-wrap:anywhere;margin:0;"
    "max-height:9.7em;overflow:hidden;background:var(--well);border-radius:5px;padding:.5em .7em}"
    "img{max-width:100%;max-height:13em;object-fit:contain;align-self:flex-start;border-radius:4px}"
    ".files{margin-top:auto;padding-top:.2em;display:flex;flex-wrap:wrap;gap:.4em}"
    ".files a{color:var(--mark);text-decoration:none;border:1px solid var(--line);border-radius:1em;"
    "padding:.05em .8em;font-size:.88em}"
    ".files a:hover{border-color:var(--mark)}"
    ".none{color:var(--soft);font-size:.88em}"
    ".more{border-left:4px solid #c9701b;padding-left:.8em}"
    "@media print{article{break-inside:avoid}body{background:none}}";

// What the link to a file says.
std::wstring LabelOf(OrdinaryKind kind) {
    switch (kind) {
        case OrdinaryKind::Text:
            return L"Text";
        case OrdinaryKind::WebPage:
            return L"Webseite";
        case OrdinaryKind::RichText:
            return L"Formatierter Text";
        case OrdinaryKind::Picture:
            return L"Bild";
        case OrdinaryKind::Drawing:
            return L"Zeichnung";
        case OrdinaryKind::FileList:
            return L"Liste von Dateien";
        case OrdinaryKind::Sound:
            return L"Klang";
        case OrdinaryKind::Table:
            return L"Tabelle";
    }
    return {};
}

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
    folders_ = allFolders_ = clips_ = 0;
    inClips_ = false;
    open_ = true;
}

void ExportIndex::OpenFolder(const std::wstring& name, const std::wstring& info) {
    ShowClips(false);
    ++allFolders_;
    body_ += "<details open><summary>" + Escaped(name) + Note("info", info) + "</summary>\n";
    ++folders_;
}

void ExportIndex::CloseFolder() {
    ShowClips(false);
    body_ += "</details>\n";
    --folders_;
}

// The clips that follow each other stand in a field of their own.
void ExportIndex::ShowClips(bool on) {
    if (on != inClips_) body_ += on ? "<div class=\"clips\">\n" : "</div>\n";
    inClips_ = on;
}

void ExportIndex::Add(const ExportedClip& clip) {
    ShowClips(true);
    ++clips_;
    body_ += "<article><h2>" + Escaped(clip.name) + "</h2><div>" + Note("when", clip.captured) + "</div>\n";
    if (!clip.info.empty()) body_ += "<div>" + Note("info", clip.info) + "</div>\n";
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
        body_ += "<a href=\"" + Linked(file.path) + "\">" + Escaped(LabelOf(file.kind)) + "</a>";
    if (clip.files.empty())
        body_ += "<span class=\"none\">kein Format, das in einer Datei stehen kann</span>";
    body_ += "</div></article>\n";
}

std::string ExportIndex::Summary() const {
    const auto counted = [](int count, const wchar_t* one, const wchar_t* many) {
        return NumberText(std::int64_t{count}) + (count == 1 ? one : many);
    };
    const std::wstring clips = counted(clips_, L" Clip", L" Clips");
    if (allFolders_ == 0) return Escaped(clips);
    return Escaped(clips + L" in " + counted(allFolders_, L" Ordner", L" Ordnern"));
}

std::vector<std::uint8_t> ExportIndex::Finish(bool stopped) {
    ShowClips(false);
    while (folders_ > 0)
        CloseFolder();
    open_ = false;
    std::string page = "<!DOCTYPE html>\n<html lang=\"de\"><head><meta charset=\"utf-8\"><title>";
    page += Escaped(title_) +
            "</title><meta name=\"viewport\" content=\"width=device-width,initial-scale=1\"><style>" +
            std::string(kStyle) + "</style></head><body>\n<header><h1>";
    page += Escaped(title_) + "</h1><div class=\"sum\">" + Summary() + "</div></header>\n" +
            std::exchange(body_, {});
    if (stopped) page += "<p class=\"more\">Der Export wurde hier beendet; es gab noch mehr.</p>\n";
    page += "</body></html>\n";
    return {page.begin(), page.end()};
}
