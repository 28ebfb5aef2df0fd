#include "engine/flows/Export.h"

#include <algorithm>
#include <utility>

#include "engine/profiles/modProfile.h"
#include "engine/search/VisibleText.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/FileBytes.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kIndex = L"index.html";
constexpr std::size_t kWritePiece = 1024 * 1024;
constexpr std::uint32_t kErrorDiskFull = 112;
// No more than this is read of a record's text for the page.
constexpr std::size_t kMostSeen = 1000;
constexpr std::size_t kReadPiece = 4096;

// A failed write that says nothing is the disk's way to say that it is full.
std::uint32_t WriteAll(FileHandle file, const std::vector<std::uint8_t>& bytes) {
    FilePort& files = ThePlatform().files;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto piece = static_cast<std::uint32_t>(std::min(kWritePiece, bytes.size() - at));
        const auto written = files.Write(file, bytes.data() + at, piece);
        if (written != piece) return written ? kErrorDiskFull : files.LastError();
        at += piece;
    }
    return 0;
}

// The beginning of what a user sees of a record.
std::wstring SeenText(const ClipRecord& record, const std::vector<std::uint8_t>& data) {
    const TextForm form = ContentOfFormat(record.id, AnsiFromText(record.name)).form;
    if (form == TextForm::None) return BeginningOfText(record, data);
    const auto reader = VisibleText::Of(form);
    std::u16string text;
    for (std::size_t at = 0; at < data.size() && text.size() < kMostSeen && !reader->Ended();
         at += kReadPiece) {
        const std::size_t size = std::min(kReadPiece, data.size() - at);
        reader->Take({reinterpret_cast<const char*>(data.data()) + at, size}, text);
    }
    reader->End(text);
    return Trim(TextFromUtf16(text));
}

}  // namespace

Export::Export(std::span<const Node* const> nodes, std::wstring directory) {
    for (const Node* node : nodes)
        Note(*node);
    FilePort& files = ThePlatform().files;
    if (!files.IsDirectory(directory) && !files.MakeDirectory(directory)) {
        Failed(FileErrorOf(files.LastError(), directory).Description());
        items_.clear();
    }
    levels_.push_back({std::move(directory), L"", {}});
}

void Export::Note(const Node& top) {
    for (TreeWalk<const Node> walk(&top); walk.InSubtree(); walk.Step()) {
        const Node& node = *walk.Current();
        const NodeAttributes attributes = AttributesOf(&node);
        items_.push_back({.depth = static_cast<std::size_t>(walk.Depth()),
                          .isClip = IsClipNode(&node),
                          .name = node.Text(),
                          .info = attributes.info,
                          .captured = attributes.timeCaptured,
                          .clipFile = ClipFileOf(&node),
                          .formatCount = attributes.formatCount});
    }
}

std::wstring Export::Summary() const {
    const auto number = [](std::size_t count) { return NumberText(static_cast<std::int64_t>(count)); };
    std::wstring text = number(files_) + (files_ == 1 ? L" Datei" : L" Dateien") + L" geschrieben";
    if (withoutForm_ > 0)
        text += L"; " + number(withoutForm_) + L" Clips haben kein Format, das in einer Datei stehen kann";
    if (!failures_.empty()) text += L"; " + number(failures_.size()) + L" Fehler";
    return text + L".";
}

bool Export::Step() {
    if (diskIsFull_) Stop();
    if (next_ == items_.size()) {
        LeaveTo(0);
        return false;
    }
    const Item& item = items_[next_++];
    LeaveTo(item.depth);
    if (item.isClip)
        WriteClip(item);
    else
        WriteFolder(item);
    return true;
}

void Export::Stop() {
    if (next_ == items_.size()) return;
    items_.resize(next_);
    if (index_.IsOpen()) WriteFile(JoinDirectory(levels_[1].directory, kIndex), index_.Finish(true));
    levels_.resize(1);
}

// The folders that hold nothing more are closed; the topmost one gets its page.
void Export::LeaveTo(std::size_t depth) {
    while (levels_.size() > depth + 1) {
        if (levels_.size() == 2)
            WriteFile(JoinDirectory(levels_[1].directory, kIndex), index_.Finish(false));
        else
            index_.CloseFolder();
        levels_.pop_back();
    }
}

void Export::WriteFolder(const Item& item) {
    const Level& above = levels_.back();
    const bool isTop = levels_.size() == 1;
    const std::wstring name = FreeName(item.name, L"Ordner", {L""});
    Level level{JoinDirectory(above.directory, name), isTop ? L"" : above.fromTop + name + L"/", {}};
    FilePort& files = ThePlatform().files;
    if (!files.MakeDirectory(level.directory)) {
        Failed(FileErrorOf(files.LastError(), level.directory).Description());
        // What is below it stays out as well.
        while (next_ < items_.size() && items_[next_].depth > item.depth)
            ++next_;
        return;
    }
    Made(level.directory);
    if (isTop) {
        index_.Begin(item.name);
        for (const wchar_t* taken : {kIndex, L"index"})
            level.names.Next(taken, [](const std::wstring&) { return false; });
    } else {
        index_.OpenFolder(item.name, item.info);
    }
    levels_.push_back(std::move(level));
}

void Export::WriteClip(const Item& item) {
    ExportedClip shown{item.name, item.info, item.captured, {}, {}};
    const auto error = ErrorIn([&] {
        if (item.clipFile.empty()) throw RuntimeError(ErrorNumber::FileTooShort);
        const auto records = RecordsOf(item.clipFile, item.formatCount);
        WriteForms(item, BestOfEachKind(records), shown);
    });
    if (error) Failed(item.name + L": " + error->Description());
    if (shown.files.empty() && !error) ++withoutForm_;
    if (index_.IsOpen()) index_.Add(shown);
}

void Export::WriteForms(const Item& item, const std::vector<ClipRecord>& records, ExportedClip& shown) {
    std::vector<std::wstring> extensions;
    for (const ClipRecord& record : records)
        extensions.push_back(OrdinaryFormOf(record)->extension);
    const std::wstring name = FreeName(item.name, L"Clip", extensions);
    for (const ClipRecord& record : records) {
        const OrdinaryForm form = *OrdinaryFormOf(record);
        const auto data = DataOf(item.clipFile, record);
        const auto bytes = OrdinaryBytes(record, data);
        if (!bytes) continue;
        const std::wstring file = name + form.extension;
        if (!WriteFile(JoinDirectory(levels_.back().directory, file), *bytes)) continue;
        shown.files.push_back({form.kind, levels_.back().fromTop + file});
        if (shown.beginning.empty()) shown.beginning = SeenText(record, data);
    }
}

bool Export::WriteFile(const std::wstring& path, const std::vector<std::uint8_t>& bytes) {
    FilePort& files = ThePlatform().files;
    FileOwner file(files.Open(path, FileUse::NewOnly));
    std::uint32_t error = file.IsSet() ? 0 : files.LastError();
    if (file.IsSet()) {
        error = WriteAll(file.Get(), bytes);
        file = FileOwner();
        if (error != 0) files.Remove(path);
    }
    if (error != 0) {
        diskIsFull_ |= error == kErrorDiskFull;
        Failed(FileErrorOf(error, path).Description());
        return false;
    }
    ++files_;
    Made(path);
    return true;
}

// A name under which no file with one of the extensions stands in the directory.
std::wstring Export::FreeName(const std::wstring& wanted, const std::wstring& fallback,
                              const std::vector<std::wstring>& extensions) {
    const std::wstring safe = SafeFileName(wanted);
    Level& level = levels_.back();
    return level.names.Next(safe.empty() ? fallback : safe, [&](const std::wstring& name) {
        return std::any_of(extensions.begin(), extensions.end(), [&](const std::wstring& extension) {
            return ThePlatform().files.Exists(JoinDirectory(level.directory, name + extension));
        });
    });
}

void Export::Failed(const std::wstring& what) {
    failures_.push_back(what);
}

void Export::Made(const std::wstring& path) {
    if (firstMade_.empty()) firstMade_ = path;
}
