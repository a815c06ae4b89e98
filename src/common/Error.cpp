#include "common/Error.h"

#include <string>
#include <utility>

namespace {

TextView RuntimeErrorText(RuntimeError error) {
    switch (error) {
        case RuntimeError::InvalidArgument: return u"Ungültiger Prozeduraufruf oder ungültiges Argument";
        case RuntimeError::Overflow: return u"Überlauf";
        case RuntimeError::OutOfMemory: return u"Nicht genügend Speicher";
        case RuntimeError::SubscriptOutOfRange: return u"Index außerhalb des gültigen Bereichs";
        case RuntimeError::TypeMismatch: return u"Typen unverträglich";
        case RuntimeError::BadFileName: return u"Dateiname oder -nummer falsch";
        case RuntimeError::FileNotFound: return u"Datei nicht gefunden";
        case RuntimeError::DeviceIo: return u"Ein-/Ausgabefehler beim Gerät";
        case RuntimeError::FileExists: return u"Datei existiert bereits";
        case RuntimeError::DiskFull: return u"Datenträger voll";
        case RuntimeError::PermissionDenied: return u"Zugriff verweigert";
        case RuntimeError::PathFileAccess: return u"Fehler beim Zugriff auf Pfad/Datei";
        case RuntimeError::PathNotFound: return u"Pfad nicht gefunden";
    }
    return {};
}

RuntimeError RuntimeErrorFromFileStatus(platform::Status status) {
    switch (status) {
        case platform::StatusFileNotFound: return RuntimeError::FileNotFound;
        case platform::StatusPathNotFound:
        case platform::StatusBadNetPath:
        case platform::StatusBadNetName: return RuntimeError::PathNotFound;
        case platform::StatusAccessDenied: return RuntimeError::PathFileAccess;
        case platform::StatusWriteProtect:
        case platform::StatusSharingViolation:
        case platform::StatusLockViolation: return RuntimeError::PermissionDenied;
        case platform::StatusFileExists: return RuntimeError::FileExists;
        case platform::StatusDiskFull:
        case platform::StatusHandleDiskFull:
        case platform::StatusDiskQuota: return RuntimeError::DiskFull;
        case platform::StatusInvalidName:
        case platform::StatusNameTooLong: return RuntimeError::BadFileName;
        default: return RuntimeError::DeviceIo;
    }
}

}  // namespace

Error::Error(std::int32_t thisNumber, Text thisDescription)
    : std::runtime_error("error " + std::to_string(thisNumber)),
      number(thisNumber),
      description(std::move(thisDescription)) {
}

ErrorState& LastError() {
    static ErrorState state;
    return state;
}

Error RuntimeErrorOf(RuntimeError error) {
    return {static_cast<std::int32_t>(error), Text(RuntimeErrorText(error))};
}

void Raise(const Error& error) {
    LastError().Set(error);
    throw error;
}

void Raise(std::int32_t number, const Text& description) {
    Raise(Error(number, description));
}

void Raise(RuntimeError error) {
    Raise(RuntimeErrorOf(error));
}

void Raise(RuntimeError error, const Text& description) {
    Raise(static_cast<std::int32_t>(error), description);
}

void RaiseFileStatus(platform::Status status) {
    if (status != platform::StatusSuccess) {
        Raise(RuntimeErrorFromFileStatus(status));
    }
}
