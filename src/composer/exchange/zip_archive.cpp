#include "composer/exchange/zip_archive.h"

#include <QtEndian>

#include <algorithm>
#include <cstdint>
#include <zlib.h>

namespace zip_archive {
namespace {

constexpr std::uint32_t kLocalSignature = 0x04034B50;
constexpr std::uint32_t kDirectorySignature = 0x02014B50;
constexpr std::uint32_t kEndSignature = 0x06054B50;
constexpr qsizetype kLocalHeader = 30;
constexpr qsizetype kDirectoryHeader = 46;
constexpr qsizetype kEndRecord = 22;
constexpr qsizetype kLongestComment = 0xFFFF;

constexpr std::uint16_t kVersion = 20;  ///< with folders and deflated files
constexpr std::uint16_t kUtf8Names = 0x0800;
constexpr std::uint16_t kEncrypted = 0x0001;
constexpr std::uint16_t kStored = 0;
constexpr std::uint16_t kDeflated = 8;
constexpr std::uint32_t kFirstOfJanuary1980 = 0x00210000;

/// Deflated data without zlib's own header.
constexpr int kRawWindow = -MAX_WBITS;
constexpr int kUsualMemory = 8;

void append16(QByteArray& bytes, std::uint16_t number) {
    for (int shift = 0; shift < 16; shift += 8)
        bytes += static_cast<char>(number >> shift);
}

void append32(QByteArray& bytes, std::uint32_t number) {
    append16(bytes, static_cast<std::uint16_t>(number));
    append16(bytes, static_cast<std::uint16_t>(number >> 16));
}

/// The number at an offset; 0 outside of the bytes.
template <typename Number>
Number numberAt(const QByteArray& bytes, qint64 offset) {
    if (offset < 0 || offset + static_cast<qint64>(sizeof(Number)) > bytes.size())
        return 0;
    return qFromLittleEndian<Number>(bytes.constData() + offset);
}

std::uint32_t checksum(const QByteArray& bytes) {
    return static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(bytes.constData()),
                                            static_cast<uInt>(bytes.size())));
}

QByteArray deflated(QByteArray bytes) {
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, kRawWindow, kUsualMemory,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
        return {};
    }
    QByteArray packed(
        static_cast<qsizetype>(deflateBound(&stream, static_cast<uLong>(bytes.size()))),
        Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.truncate(static_cast<qsizetype>(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

/// Nothing unless the data gives exactly so many bytes.
std::optional<QByteArray> inflated(QByteArray packed, qint64 size) {
    z_stream stream{};
    if (inflateInit2(&stream, kRawWindow) != Z_OK)
        return std::nullopt;
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    const bool ended = inflate(&stream, Z_FINISH) == Z_STREAM_END;
    const bool exact = static_cast<qint64>(stream.total_out) == size;
    inflateEnd(&stream);
    return ended && exact ? std::optional(bytes) : std::nullopt;
}

/// A file as the directory describes it, from the version that is needed to the lengths.
struct Description {
    std::uint16_t flags = kUtf8Names;
    std::uint16_t method = kDeflated;
    std::uint32_t checksum = 0;
    std::uint32_t packedSize = 0;
    std::uint32_t size = 0;
    QByteArray name;

    void appendTo(QByteArray& bytes) const {
        append16(bytes, kVersion);
        append16(bytes, flags);
        append16(bytes, method);
        append32(bytes, kFirstOfJanuary1980);
        append32(bytes, checksum);
        append32(bytes, packedSize);
        append32(bytes, size);
        append16(bytes, static_cast<std::uint16_t>(name.size()));
        append16(bytes, 0);  // no extra field
    }
};

std::optional<QByteArray> contentOf(const QByteArray& archive, const Description& file,
                                    qint64 offset) {
    if (numberAt<std::uint32_t>(archive, offset) != kLocalSignature ||
        (file.flags & kEncrypted) != 0)
        return std::nullopt;
    const qint64 start = offset + kLocalHeader + numberAt<std::uint16_t>(archive, offset + 26) +
                         numberAt<std::uint16_t>(archive, offset + 28);
    if (start + file.packedSize > archive.size())
        return std::nullopt;
    const QByteArray packed = archive.mid(start, file.packedSize);
    std::optional<QByteArray> bytes;
    if (file.method == kStored && file.packedSize == file.size)
        bytes = packed;
    else if (file.method == kDeflated)
        bytes = inflated(packed, file.size);
    return bytes && checksum(*bytes) == file.checksum ? bytes : std::nullopt;
}

/// The end record stands at the end, before a comment.
qint64 endRecordOf(const QByteArray& archive) {
    const qint64 last = archive.size() - kEndRecord;
    for (qint64 at = last; at >= std::max<qint64>(0, last - kLongestComment); --at) {
        if (numberAt<std::uint32_t>(archive, at) == kEndSignature)
            return at;
    }
    return -1;
}

}  // namespace

QByteArray write(const std::vector<File>& files) {
    QByteArray archive;
    QByteArray directory;
    for (const File& file : files) {
        const QByteArray packed = deflated(file.bytes);
        Description description;
        description.checksum = checksum(file.bytes);
        description.packedSize = static_cast<std::uint32_t>(packed.size());
        description.size = static_cast<std::uint32_t>(file.bytes.size());
        description.name = file.name.toUtf8();
        append32(directory, kDirectorySignature);
        append16(directory, kVersion);
        description.appendTo(directory);
        append16(directory, 0);  // no comment
        append16(directory, 0);  // on the first disk
        append16(directory, 0);
        append32(directory, 0);
        append32(directory, static_cast<std::uint32_t>(archive.size()));
        directory += description.name;
        append32(archive, kLocalSignature);
        description.appendTo(archive);
        archive += description.name + packed;
    }
    const auto start = static_cast<std::uint32_t>(archive.size());
    const auto count = static_cast<std::uint16_t>(files.size());
    archive += directory;
    append32(archive, kEndSignature);
    append32(archive, 0);  // one disk
    append16(archive, count);
    append16(archive, count);
    append32(archive, static_cast<std::uint32_t>(directory.size()));
    append32(archive, start);
    append16(archive, 0);  // no comment
    return archive;
}

std::optional<std::vector<File>> read(const QByteArray& archive,
                                      const std::vector<QString>& endings, qint64 atMost) {
    const qint64 end = endRecordOf(archive);
    if (end < 0)
        return std::nullopt;
    std::vector<File> files;
    qint64 at = numberAt<std::uint32_t>(archive, end + 16);
    for (int i = numberAt<std::uint16_t>(archive, end + 10); i > 0; --i) {
        if (numberAt<std::uint32_t>(archive, at) != kDirectorySignature)
            return std::nullopt;
        Description file;
        file.flags = numberAt<std::uint16_t>(archive, at + 8);
        file.method = numberAt<std::uint16_t>(archive, at + 10);
        file.checksum = numberAt<std::uint32_t>(archive, at + 16);
        file.packedSize = numberAt<std::uint32_t>(archive, at + 20);
        file.size = numberAt<std::uint32_t>(archive, at + 24);
        file.name = archive.mid(at + kDirectoryHeader, numberAt<std::uint16_t>(archive, at + 28));
        const qint64 offset = numberAt<std::uint32_t>(archive, at + 42);
        at += kDirectoryHeader + numberAt<std::uint16_t>(archive, at + 28) +
              numberAt<std::uint16_t>(archive, at + 30) + numberAt<std::uint16_t>(archive, at + 32);
        const QString name = QString::fromUtf8(file.name);
        if (std::none_of(endings.begin(), endings.end(), [&name](const QString& ending) {
                return name.endsWith(ending, Qt::CaseInsensitive);
            }))
            continue;
        if (file.size > atMost)
            return std::nullopt;
        auto bytes = contentOf(archive, file, offset);
        if (!bytes)
            return std::nullopt;
        atMost -= bytes->size();
        files.push_back({name, std::move(*bytes)});
    }
    return files;
}

bool isArchive(const QByteArray& bytes) {
    return numberAt<std::uint32_t>(bytes, 0) == kLocalSignature;
}

}  // namespace zip_archive
