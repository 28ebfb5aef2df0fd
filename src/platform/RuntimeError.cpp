#include "platform/RuntimeError.h"

#include <new>
#include <stdexcept>

#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

std::wstring DescriptionOf(ErrorNumber number) {
    switch (number) {
        case ErrorNumber::InvalidArgument:
            return L"Ungültiger Wert";
        case ErrorNumber::Overflow:
            return L"Überlauf";
        case ErrorNumber::OutOfMemory:
            return L"Nicht genügend Speicher";
        case ErrorNumber::IndexOutOfRange:
            return L"Index außerhalb des gültigen Bereichs";
        case ErrorNumber::TypeMismatch:
            return L"Falscher Datentyp";
        case ErrorNumber::Internal:
            return L"Interner Fehler";
        case ErrorNumber::FileNotFound:
            return L"Datei nicht gefunden";
        case ErrorNumber::FileError:
            return L"Fehler beim Zugriff auf die Datei";
        case ErrorNumber::FileTooShort:
            return L"Die Datei ist beschädigt oder zu kurz";
        case ErrorNumber::DiskFull:
            return L"Der Datenträger ist voll";
        case ErrorNumber::AccessDenied:
            return L"Zugriff verweigert";
        case ErrorNumber::PathError:
            return L"Pfad nicht gefunden";
        case ErrorNumber::ObjectMissing:
            return L"Objekt nicht vorhanden";
        case ErrorNumber::DuplicateKey:
            return L"Der Schlüssel ist schon vergeben";
    }
    return L"Unbekannter Fehler";
}

// The system's error codes that files fail with and that have a description of their own.
constexpr std::uint32_t kFileNotFound = 2;
constexpr std::uint32_t kPathNotFound = 3;
constexpr std::uint32_t kAccessDenied = 5;
constexpr std::uint32_t kNotEnoughMemory = 8;
constexpr std::uint32_t kInvalidDrive = 15;
constexpr std::uint32_t kWriteProtected = 19;
constexpr std::uint32_t kNotReady = 21;
constexpr std::uint32_t kSharingViolation = 32;
constexpr std::uint32_t kLockViolation = 33;
constexpr std::uint32_t kHandleDiskFull = 39;
constexpr std::uint32_t kFileExists = 80;
constexpr std::uint32_t kDiskFull = 112;
constexpr std::uint32_t kInvalidName = 123;
constexpr std::uint32_t kAlreadyExists = 183;

}  // namespace

RuntimeError::RuntimeError(ErrorNumber number) : RuntimeError(number, DescriptionOf(number)) {}

RuntimeError FileErrorOf(std::uint32_t systemCode, const std::wstring& path) {
    const auto error = [&path](ErrorNumber number, const std::wstring& description) {
        return RuntimeError(number, description + L": " + path);
    };
    switch (systemCode) {
        case kFileNotFound:
            return error(ErrorNumber::FileNotFound, DescriptionOf(ErrorNumber::FileNotFound));
        case kPathNotFound:
            return error(ErrorNumber::PathError, DescriptionOf(ErrorNumber::PathError));
        case kInvalidName:
            return error(ErrorNumber::PathError, L"Ungültiger Dateiname");
        case kInvalidDrive:
        case kNotReady:
            return error(ErrorNumber::PathError, L"Das Laufwerk ist nicht bereit");
        case kAccessDenied:
            return error(ErrorNumber::AccessDenied, DescriptionOf(ErrorNumber::AccessDenied));
        case kWriteProtected:
            return error(ErrorNumber::AccessDenied, L"Der Datenträger ist schreibgeschützt");
        case kSharingViolation:
        case kLockViolation:
            return error(ErrorNumber::AccessDenied, L"Die Datei wird von einem anderen Programm benutzt");
        case kFileExists:
        case kAlreadyExists:
            return error(ErrorNumber::FileError, L"Den Namen gibt es dort schon");
        case kHandleDiskFull:
        case kDiskFull:
            return error(ErrorNumber::DiskFull, DescriptionOf(ErrorNumber::DiskFull));
        case kNotEnoughMemory:
            return error(ErrorNumber::OutOfMemory, DescriptionOf(ErrorNumber::OutOfMemory));
        default:
            return error(ErrorNumber::FileError, DescriptionOf(ErrorNumber::FileError) + L" (Fehlercode " +
                                                     std::to_wstring(systemCode) + L")");
    }
}

RuntimeError DiskFullError(const std::wstring& path) {
    return FileErrorOf(kDiskFull, path);
}

RuntimeError ErrorBeingHandled() {
    try {
        throw;
    } catch (const RuntimeError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return RuntimeError(ErrorNumber::OutOfMemory);
    } catch (const std::length_error&) {
        // A container says this of a size that no memory could hold.
        return RuntimeError(ErrorNumber::OutOfMemory);
    } catch (const std::exception& error) {
        const std::wstring description = DescriptionOf(ErrorNumber::Internal);
        return RuntimeError(ErrorNumber::Internal, description + L": " + TextFromAnsi(error.what()));
    } catch (...) {
        return RuntimeError(ErrorNumber::Internal);
    }
}

void TellError(const RuntimeError& error) {
    ThePlatform().user.Tell(error.Description());
}
