#include "fake/FakeClipboard.h"

#include <algorithm>

#include "platform/Text.h"

namespace {

constexpr FormatNumber kText = 1, kBitmap = 2, kPicture = 3, kOemText = 7, kPalette = 9, kUnicode = 13,
                       kEnhancedMetafile = 14;
constexpr FormatNumber kDisplayBitmap = 130;
constexpr FormatNumber kFirstRegistered = 0xC000, kLastRegistered = 0xFFFF;
constexpr std::size_t kLongestName = 255;

constexpr std::uint32_t kRenderFormatMessage = 0x0305, kDrawClipboardMessage = 0x0308,
                        kChangeChainMessage = 0x030D, kClipboardUpdateMessage = 0x031D;

constexpr std::uint32_t kErrorAccessDenied = 5, kErrorInvalidHandle = 6, kErrorInvalidName = 123,
                        kErrorNotFound = 1168, kErrorNotOpen = 1418;

ResourceKind KindOf(FormatNumber format) {
    switch (format) {
        case kBitmap:
        case kPalette:
        case kDisplayBitmap:
            return ResourceKind::GdiObject;
        case kEnhancedMetafile:
            return ResourceKind::EnhancedMetafile;
        default:
            return ResourceKind::Block;
    }
}

Ledger::Number NumberOf(DataHandle data) {
    return static_cast<Ledger::Number>(data);
}

Ledger::Number NumberOf(std::int32_t metafile) {
    return static_cast<std::uint32_t>(metafile);
}

MessageParameter ParameterOf(WindowHandle window) {
    return static_cast<MessageParameter>(window);
}

}  // namespace

FakeClipboard::FakeClipboard(Ledger& ledger, Failures& failures, FakeMemory& memory, FakeMetafiles& metafiles,
                             FakeWindows& windows)
    : ledger_(ledger), failures_(failures), memory_(memory), metafiles_(metafiles), windows_(windows) {
    otherProgram = windows_.AddWindow(L"Anderes Programm");
}

bool FakeClipboard::Fail(std::uint32_t error) {
    lastError_ = error;
    return false;
}

bool FakeClipboard::Open(WindowHandle owner) {
    const bool held = busyOpens_ > 0 && busyOpens_-- > 0;
    if (failures_.Strikes(Operation::ClipboardOpen) || held || (openFor_ && *openFor_ != owner))
        return Fail(kErrorAccessDenied);
    openFor_ = owner;
    if (owner != otherProgram) ledger_.ClipboardOpened();
    return true;
}

void FakeClipboard::Close() {
    if (!openFor_) {
        ledger_.Complain("the clipboard: closed although it is not open");
        lastError_ = kErrorNotOpen;
        return;
    }
    openFor_.reset();
    ledger_.ClipboardClosed();
    ledger_.EndLoans();
    if (!changed_) return;
    changed_ = false;
    TellViewers();
}

bool FakeClipboard::Empty() {
    if (failures_.Strikes(Operation::ClipboardEmpty)) return Fail(kErrorAccessDenied);
    if (!openFor_) return Fail(kErrorNotOpen);
    FreeContent();
    owner_ = *openFor_;
    changed_ = true;
    ++sequence_;
    return true;
}

FormatNumber FakeClipboard::NextFormat(FormatNumber previous) {
    lastError_ = openFor_ ? 0 : kErrorNotOpen;
    if (!openFor_) return 0;
    auto next = content_.begin();
    if (previous != 0) {
        next = std::find_if(content_.begin(), content_.end(),
                            [&](const Entry& entry) { return entry.format == previous; });
        if (next != content_.end()) ++next;
    }
    return next == content_.end() ? 0 : next->format;
}

DataHandle FakeClipboard::Data(FormatNumber format) {
    const bool fails = failures_.Strikes(Operation::ClipboardData) || !openFor_;
    const DataHandle data = fails ? DataHandle::None : DataOf(format);
    if (data == DataHandle::None) lastError_ = fails ? kErrorNotOpen : kErrorNotFound;
    ledger_.Lend(NumberOf(data));
    ledger_.Lend(NumberOf(MetafileIn(format, data)));
    return data;
}

bool FakeClipboard::Announce(FormatNumber format) {
    if (failures_.Strikes() || !MayPut(format)) return Fail(kErrorNotOpen);
    Store(format, DataHandle::None);
    return true;
}

bool FakeClipboard::Put(FormatNumber format, DataHandle data) {
    if (failures_.Strikes() || !MayPut(format)) return Fail(kErrorNotOpen);
    if (!ledger_.Knows(KindOf(format), NumberOf(data))) {
        ledger_.Complain("the clipboard: format " + std::to_string(format) +
                         " put with a handle of another kind");
        return Fail(kErrorInvalidHandle);
    }
    ledger_.HandOver(NumberOf(data));
    ledger_.HandOver(NumberOf(MetafileIn(format, data)));
    EndText(format, data);
    Store(format, data);
    return true;
}

bool FakeClipboard::Holds(FormatNumber format) {
    return Find(format) != nullptr;
}

FormatNumber FakeClipboard::RegisterName(const std::string& name) {
    const std::string cut = name.substr(0, name.find('\0'));
    if (failures_.Strikes(Operation::ClipboardRegisterName) || cut.empty() || cut.size() > kLongestName) {
        lastError_ = kErrorInvalidName;
        return 0;
    }
    for (const auto& [format, known] : names_)
        if (CompareNoCase(TextFromAnsi(known), TextFromAnsi(cut)) == 0) return format;
    names_[++lastName_] = cut;
    return lastName_;
}

std::optional<std::string> FakeClipboard::RegisteredName(FormatNumber format, int most) {
    if (format < kFirstRegistered || format > kLastRegistered || most <= 0) return std::nullopt;
    const auto found = names_.find(format);
    if (found == names_.end()) return std::nullopt;
    return found->second.substr(0, static_cast<std::size_t>(most));
}

WindowHandle FakeClipboard::JoinChain(WindowHandle window) {
    const WindowHandle next = firstViewer_;
    firstViewer_ = window;
    // A new viewer is told of the content that is there, before it knows its successor.
    windows_.Deliver(window, kDrawClipboardMessage, ParameterOf(owner_), 0);
    return next;
}

void FakeClipboard::LeaveChain(WindowHandle window, WindowHandle next) {
    if (firstViewer_ == window) {
        firstViewer_ = next;
    } else if (firstViewer_ != WindowHandle::None) {
        if (!windows_.Answers(firstViewer_))
            ledger_.Complain("the viewer chain: a viewer that hangs is waited for without end");
        windows_.Deliver(firstViewer_, kChangeChainMessage, ParameterOf(window), ParameterOf(next));
    }
}

FakeClipboard::Offer FakeClipboard::Bytes(FormatNumber format, std::string bytes) {
    return {format, [format, bytes](FakeClipboard& clipboard) {
                const DataHandle data = clipboard.memory_.MakeForClipboard(bytes);
                clipboard.EndText(format, data);
                return data;
            }};
}

FakeClipboard::Offer FakeClipboard::Picture(std::string bits, std::int32_t mode, std::int32_t xExtent,
                                            std::int32_t yExtent, std::size_t surplus) {
    return {kPicture, [=](FakeClipboard& clipboard) {
                MetafilePicture picture{mode, xExtent, yExtent, clipboard.metafiles_.MakeForClipboard(bits)};
                std::string block(clipboard.metafiles_.PictureBlockSize() + surplus, '\0');
                clipboard.metafiles_.WritePicture(picture, block.data());
                return clipboard.memory_.MakeForClipboard(block);
            }};
}

FakeClipboard::Offer FakeClipboard::Enhanced(std::string bits) {
    return {kEnhancedMetafile,
            [bits](FakeClipboard& clipboard) { return clipboard.metafiles_.MakeEnhancedForClipboard(bits); }};
}

FakeClipboard::Offer FakeClipboard::GdiObject(FormatNumber format) {
    return {format, [](FakeClipboard& clipboard) {
                const Ledger::Number object = clipboard.ledger_.Take(ResourceKind::GdiObject);
                clipboard.ledger_.HandOver(object);
                return static_cast<DataHandle>(object);
            }};
}

FakeClipboard::Offer FakeClipboard::Late(Offer offer) {
    offer.late = true;
    return offer;
}

FakeClipboard::Offer FakeClipboard::Refused(FormatNumber format) {
    return {format, [](FakeClipboard&) { return DataHandle::None; }, true};
}

void FakeClipboard::OtherProgramCopies(const std::vector<Offer>& offers) {
    if (openFor_) {
        ledger_.Complain("the clipboard: another program wants to copy while it is open");
        return;
    }
    FreeContent();
    owner_ = otherProgram;
    ++sequence_;
    for (const Offer& offer : offers)
        content_.push_back({offer.format, offer.late ? DataHandle::None : offer.make(*this), offer.make});
    TellViewers();
}

std::optional<std::string> FakeClipboard::OtherProgramReads(FormatNumber format) {
    if (openFor_) {
        ledger_.Complain("the clipboard: another program wants to read while it is open");
        return std::nullopt;
    }
    openFor_ = otherProgram;
    const DataHandle data = DataOf(format);
    openFor_.reset();
    ledger_.EndLoans();
    if (data == DataHandle::None) return std::nullopt;
    return BytesOf(format, data);
}

std::vector<FormatNumber> FakeClipboard::Formats() const {
    std::vector<FormatNumber> formats;
    for (const Entry& entry : content_)
        formats.push_back(entry.format);
    return formats;
}

bool FakeClipboard::IsPending(FormatNumber format) const {
    const Entry* entry = Find(format);
    return entry != nullptr && entry->data == DataHandle::None;
}

std::string FakeClipboard::Content(FormatNumber format) const {
    const Entry* entry = Find(format);
    return entry == nullptr ? std::string() : BytesOf(format, entry->data);
}

// Whoever has it open may put; while another program waits for a format, so may the owner.
bool FakeClipboard::MayPut(FormatNumber format) const {
    return format != 0 && (openFor_.has_value() || rendering_ > 0);
}

const FakeClipboard::Entry* FakeClipboard::Find(FormatNumber format) const {
    const auto found = std::find_if(content_.begin(), content_.end(),
                                    [&](const Entry& entry) { return entry.format == format; });
    return found == content_.end() ? nullptr : &*found;
}

FakeClipboard::Entry* FakeClipboard::Find(FormatNumber format) {
    return const_cast<Entry*>(static_cast<const FakeClipboard*>(this)->Find(format));
}

// The system makes sure that every text on the clipboard has an end, whatever stood in its last character.
void FakeClipboard::EndText(FormatNumber format, DataHandle data) {
    if (format == kText || format == kOemText) memory_.Terminate(data, 1);
    if (format == kUnicode) memory_.Terminate(data, 2);
}

void FakeClipboard::Store(FormatNumber format, DataHandle data) {
    if (rendering_ == 0) changed_ = true;
    ++sequence_;
    if (Entry* entry = Find(format)) {
        FreeData(*entry);
        *entry = {format, data, {}};
    } else {
        content_.push_back({format, data, {}});
    }
}

DataHandle FakeClipboard::DataOf(FormatNumber format) {
    const Entry* entry = Find(format);
    if (entry == nullptr) return DataHandle::None;
    if (entry->data == DataHandle::None) {
        Render(format);
        entry = Find(format);
    }
    return entry == nullptr ? DataHandle::None : entry->data;
}

void FakeClipboard::Render(FormatNumber format) {
    const Entry entry = *Find(format);
    rendered.push_back(format);
    if (entry.make) {
        const DataHandle data = entry.make(*this);
        if (Entry* const stored = Find(format)) stored->data = data;
        ++sequence_;  // as Microsoft documents it; some systems count it, some do not
        return;
    }
    // The owner answers this with a Put of its own.
    ++rendering_;
    windows_.Deliver(owner_, kRenderFormatMessage, format, 0);
    --rendering_;
}

// The metafile of a picture, 0 when it is none.
std::int32_t FakeClipboard::MetafileIn(FormatNumber format, DataHandle data) const {
    const std::string block = memory_.Bytes(data);
    const bool isPicture = format == kPicture && block.size() >= metafiles_.PictureBlockSize();
    return isPicture ? metafiles_.ReadPicture(block.data()).metafile : 0;
}

std::string FakeClipboard::BytesOf(FormatNumber format, DataHandle data) const {
    if (KindOf(format) == ResourceKind::EnhancedMetafile) return metafiles_.Bits(data);
    const std::int32_t metafile = MetafileIn(format, data);
    return metafile != 0 ? metafiles_.Bits(metafile) : memory_.Bytes(data);
}

void FakeClipboard::FreeData(const Entry& entry) {
    metafiles_.FreeBySystem(MetafileIn(entry.format, entry.data));
    if (KindOf(entry.format) == ResourceKind::EnhancedMetafile)
        metafiles_.FreeBySystem(entry.data);
    else
        memory_.FreeBySystem(entry.data);
}

void FakeClipboard::FreeContent() {
    for (const Entry& entry : content_)
        FreeData(entry);
    content_.clear();
}

void FakeClipboard::TellViewers() {
    if (listenersFirst) TellListeners();
    if (firstViewer_ != WindowHandle::None)
        windows_.Deliver(firstViewer_, kDrawClipboardMessage, ParameterOf(owner_), 0);
    if (!listenersFirst) TellListeners();
}

void FakeClipboard::TellListeners() {
    for (const WindowHandle listener : std::vector(listeners_))
        windows_.Deliver(listener, kClipboardUpdateMessage, 0, 0);
}
