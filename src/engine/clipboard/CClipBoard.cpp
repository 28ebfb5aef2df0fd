#include "engine/clipboard/CClipBoard.h"

#include "platform/Platform.h"

std::shared_ptr<CFormats> CClipBoard::GetClipboardFormats() {
    formats_ = std::make_shared<CFormats>();
    ClipboardPort& clipboard = ThePlatform().clipboard;
    for (FormatNumber id = clipboard.NextFormat(0); id != 0; id = clipboard.NextFormat(id)) {
        auto format = std::make_unique<CFormat>();
        format->Get_ID_Name(id);
        formats_->Add(std::move(format));
    }
    return formats_;
}

std::shared_ptr<CFormats> CClipBoard::LoadFormatsByHandle(FileHandle file, std::int16_t count) {
    if (count < 1) return nullptr;
    auto formats = std::make_shared<CFormats>();
    formats_ = formats;
    int unreadable = 0;
    damaged_ = false;
    for (int i = 1; i <= count && unreadable < kMostUnreadableRecords && !damaged_; ++i) {
        auto format = std::make_unique<CFormat>();
        if (format->LoadFromFile(file, false)) {
            formats->Add(std::move(format));
            continue;
        }
        ++unreadable;
        damaged_ = format->Blank;
        ThePlatform().user.Tell(L"LoadFormatsByHandle: Schwerer Fehler beim Lesen der Formate aus der Datei");
    }
    return formats;
}
