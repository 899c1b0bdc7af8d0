#include "lmModuleQtVersion.h"

#include <QFile>
#include <QVector>

#include <algorithm>
#include <cstdint>

namespace {

enum : std::uint32_t { PT_LOAD_ = 1, PT_DYNAMIC_ = 2 };
enum : std::uint64_t { DT_NULL_ = 0, DT_NEEDED_ = 1, DT_STRTAB_ = 5, DT_STRSZ_ = 10 };

// Bounds-checked reads of 32- or 64-bit ELF fields in the file's byte order.
class ElfReader
{
public:
    explicit ElfReader(const QByteArray &data) : m_data(data) {}

    bool header()
    {
        if (m_data.size() < 52 || !m_data.startsWith("\x7f" "ELF"))
            return false;
        m_wide = m_data[4] == 2;
        m_bigEndian = m_data[5] == 2;
        return (m_data[4] == 1 || m_wide) && (m_data[5] == 1 || m_bigEndian);
    }

    bool wide() const { return m_wide; }

    // An unsigned field of the given size at offset; ok turns false past the end.
    std::uint64_t read(std::uint64_t offset, int size, bool &ok) const
    {
        if (offset > std::uint64_t(m_data.size()) || std::uint64_t(m_data.size()) - offset < std::uint64_t(size)) {
            ok = false;
            return 0;
        }
        std::uint64_t value = 0;
        for (int i = 0; i < size; ++i) {
            const auto byte = std::uint8_t(m_data[int(offset) + (m_bigEndian ? i : size - 1 - i)]);
            value = (value << 8) | byte;
        }
        return value;
    }
    std::uint64_t word(std::uint64_t offset, bool &ok) const { return read(offset, m_wide ? 8 : 4, ok); }

    QByteArray string(std::uint64_t offset, std::uint64_t limit) const
    {
        const std::uint64_t end = std::min<std::uint64_t>(limit, std::uint64_t(m_data.size()));
        if (offset >= end)
            return QByteArray();
        const char *start = m_data.constData() + offset;
        return QByteArray(start, int(qstrnlen(start, uint(end - offset))));
    }

private:
    const QByteArray &m_data;
    bool m_wide = false;
    bool m_bigEndian = false;
};

struct Segment
{
    std::uint32_t type;
    std::uint64_t offset, address, fileSize;
};

}

QStringList lmNeededLibraries(const QByteArray &elf)
{
    ElfReader reader(elf);
    if (!reader.header())
        return {};
    bool ok = true;
    const bool wide = reader.wide();
    // The program headers, as the dynamic loader reads them.
    const std::uint64_t phoff = reader.word(wide ? 32 : 28, ok);
    const std::uint64_t phentsize = reader.read(wide ? 54 : 42, 2, ok);
    const std::uint64_t phnum = reader.read(wide ? 56 : 44, 2, ok);
    QVector<Segment> segments;
    for (std::uint64_t i = 0; ok && i < phnum; ++i) {
        const std::uint64_t at = phoff + i * phentsize;
        Segment segment;
        segment.type = std::uint32_t(reader.read(at, 4, ok));
        segment.offset = reader.word(at + (wide ? 8 : 4), ok);
        segment.address = reader.word(at + (wide ? 16 : 8), ok);
        segment.fileSize = reader.word(at + (wide ? 32 : 16), ok);
        segments << segment;
    }
    if (!ok)
        return {};

    // The dynamic section: the needed names are offsets into its string table.
    QVector<std::uint64_t> needed;
    std::uint64_t strtab = 0, strsz = 0;
    for (const Segment &segment : segments) {
        if (segment.type != PT_DYNAMIC_)
            continue;
        const int entry = wide ? 16 : 8;
        for (std::uint64_t at = segment.offset; at + entry <= segment.offset + segment.fileSize; at += entry) {
            const std::uint64_t tag = reader.word(at, ok);
            const std::uint64_t value = reader.word(at + entry / 2, ok);
            if (!ok || tag == DT_NULL_)
                break;
            if (tag == DT_NEEDED_)
                needed << value;
            else if (tag == DT_STRTAB_)
                strtab = value;
            else if (tag == DT_STRSZ_)
                strsz = value;
        }
    }
    // The string table is given by its address; find it in the file.
    for (const Segment &segment : segments) {
        if (segment.type != PT_LOAD_ || strtab < segment.address || strtab - segment.address >= segment.fileSize)
            continue;
        const std::uint64_t start = segment.offset + (strtab - segment.address);
        QStringList names;
        for (std::uint64_t offset : needed)
            if (offset < strsz)
                names << QString::fromLatin1(reader.string(start + offset, start + strsz));
        return names;
    }
    return {};
}

int lmModuleQtMajor(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    // Mapped, not read: a module with debug information is large.
    const qint64 size = file.size();
    uchar *mapped = size > 0 && size < (qint64(1) << 31) ? file.map(0, size) : nullptr;
    if (!mapped)
        return 0;
    const QByteArray elf = QByteArray::fromRawData(reinterpret_cast<const char *>(mapped), int(size));
    for (const QString &library : lmNeededLibraries(elf))
        for (int major : {5, 6})
            if (library.startsWith(QStringLiteral("libQt%1").arg(major)))
                return major;
    return 0;
}
