#include "composer/library/melody_reader.h"

#include "composer/library/melody_file.h"

MelodyReading readMelody(const Folders& folders, const QString& path) {
    // A byte more than allowed tells the reader that the file is too large.
    const Folders::Content content = folders.readFile(path, melody_file::kLargestFile + 1);
    if (content.error.failed()) {
        // A file that cannot be read to its end is a damaged one.
        const bool damaged = content.error.number == file_error::kDeviceFault;
        return {damaged ? FileError{} : content.error, std::nullopt};
    }
    return {{}, melody_file::read(content.bytes), content.bytes};
}
