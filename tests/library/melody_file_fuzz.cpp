// Feeds the reader of melody files with bytes of a fuzzer's choice. Whatever it reads must be
// written so that it reads the same, and must open without harm.

#include "composer/library/melody_file.h"

#include <cstdint>
#include <cstdlib>

namespace {

void require(bool holds) {
    if (!holds)
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = melody_file::read(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (!file)
        return 0;
    const auto written = melody_file::write(*file);
    require(written.refused.isEmpty());
    const auto again = melody_file::read(written.bytes);
    require(again && again->texts == file->texts && again->bookmarks == file->bookmarks);
    require(melody_file::write(*again).bytes == written.bytes);

    Composition composition;
    MelodyEditor editor(composition);
    editor.open(*file);
    require(composition.melody.consistent() || composition.melody.empty());
    for (int i = 0; i < composition.melody.EntryCount(); ++i)
        require(composition.melody.entry(i).noteNumber() >= 0);
    editor.undo();
    require(composition.melody.empty());
    return 0;
}
