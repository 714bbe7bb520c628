// An archive of any bytes: what is read stays within the limits, is packed and read again as the same files,
// and becomes a log or a reason why it is none.

#include "require.h"

#include "backup/backupfiles.h"
#include "backup/ziparchive.h"
#include "platform/runtimeerror.h"

#include <QLocale>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <sys/mman.h>
#include <unistd.h>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// A file in memory alone.
class MemoryFile
{
public:
    explicit MemoryFile(QByteArrayView bytes)
        : m_file(memfd_create("archive", MFD_CLOEXEC))
    {
        require(m_file >= 0
            && ::write(m_file, bytes.data(), static_cast<std::size_t>(bytes.size())) == bytes.size());
    }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;
    ~MemoryFile() { ::close(m_file); }

    [[nodiscard]] QString path() const { return u"/proc/self/fd/%1"_s.arg(m_file); }

private:
    int m_file;
};

qint64 unpackedSize(const ZipContent &content)
{
    qint64 size = 0;
    for (const ZipMember &member : content.members) {
        size += member.bytes.size();
    }
    return size;
}

// What can be packed comes back; two files of one name cannot.
void packAndReadAgain(const ZipContent &content)
{
    std::optional<QByteArray> packed;
    try {
        packed = zipBytes(content.members, content.comment, *fromCivil({2025, 6, 1}));
    } catch (const RuntimeError &error) {
        require(error.doing().startsWith(u"Packing a backup: "));
        return;
    }
    const MemoryFile file(*packed);
    const ZipContent again = readZip(file.path(), ZipReading::Whole);
    require(again.problem.isEmpty() && again.members.size() == content.members.size());
    for (std::size_t i = 0; i < again.members.size(); ++i) {
        require(again.members[i].bytes == content.members[i].bytes);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Regional regional {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())};
    const MemoryFile file(QByteArrayView(data, static_cast<qsizetype>(size)));
    const ZipContent content = readZip(file.path(), ZipReading::Whole);
    require(content.members.size() <= std::size_t(mostZipMembers) && unpackedSize(content) <= largestArchive);
    require(readZip(file.path(), ZipReading::CommentAlone).comment == content.comment);
    constexpr qint64 muchToPack = 1 << 20;
    if (content.problem.isEmpty() && unpackedSize(content) <= muchToPack) {
        packAndReadAgain(content);
    }
    const auto told = receptionsTold(content.comment);
    require(!told || *told >= 0);
    try {
        const BackedUpLog kept = readBackup(file.path(), logbookTold(content.comment), regional);
        require(content.problem.isEmpty() && kept.log.count() >= 0);
    } catch (const RuntimeError &error) {
        require(!error.doing().isEmpty());
    }
    return 0;
}
