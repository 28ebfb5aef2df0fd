#include "clipboard/CFormat.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include "app/modOption.h"
#include "clipboard/ClipFileLayout.h"
#include "clipboard/GlobalBlock.h"
#include "clipboard/modClipboard.h"
#include "clipboard/modFileIO.h"
#include "platform/LittleEndian.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

CFormat::~CFormat() {
    ReleaseGlobalData(false);
}

void CFormat::ReleaseGlobalData(bool keep) {
    UnlockMemo();
    if (keep) return;
    const bool ours = !HandedOver || clipboardHasCopy_;
    if (MemHandle != DataHandle::None && ours) ThePlatform().memory.Free(MemHandle);
    MemHandle = DataHandle::None;
    HandedOver = false;
    clipboardHasCopy_ = false;
    Loaded = false;
}

void* CFormat::LockMemo() {
    if (MemHandle == DataHandle::None) return nullptr;
    if (LockedPointer == nullptr) LockedPointer = ThePlatform().memory.Lock(MemHandle);
    return LockedPointer;
}

void CFormat::UnlockMemo() {
    if (LockedPointer == nullptr || MemHandle == DataHandle::None) return;
    ThePlatform().memory.Unlock(MemHandle);
    LockedPointer = nullptr;
}

FormatNumber CFormat::Register() {
    const bool named = !FormatName.empty() && FormatName != kUnknownFormatName;
    if (FormatId == 0 || IsStandardFormat(FormatId) || !named) return FormatId;
    const FormatNumber registered = ThePlatform().clipboard.RegisterName(AnsiFromText(FormatName));
    return registered != 0 ? registered : FormatId;
}

bool CFormat::PrepareClipboard() {
    ThePlatform().clipboard.Announce(Register());
    return false;
}

bool CFormat::SetToClipboard() {
    const FormatNumber id = Register();
    if (MemHandle == DataHandle::None) return false;
    switch (FormatId) {
        case kMetafilePictureFormat:
            clipboardHasCopy_ = PutMetafilePicture();
            HandedOver = clipboardHasCopy_;
            break;
        case kEnhancedMetafileFormat:
            clipboardHasCopy_ = PutEnhancedMetafile();
            HandedOver = clipboardHasCopy_;
            break;
        default:
            UnlockMemo();
            HandedOver = ThePlatform().clipboard.Put(id, MemHandle);
    }
    return HandedOver;
}
