#include "backup/ziparchive.h"

#include "platform/runtimeerror.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <memory>
#include <zip.h>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

RuntimeError packingError(const char *words)
{
    return {ErrorName::InternalError, u"Packing a backup: "_s + QString::fromUtf8(words)};
}

struct CloseFile
{
    void operator()(zip_file_t *file) const { zip_fclose(file); }
};

QString tooLarge()
{
    return u"it holds more than %1 MiB"_s.arg(largestArchive >> 20);
}

// An archive that is read.
class OpenZip
{
public:
    explicit OpenZip(const QString &path)
    {
        int code = ZIP_ER_OK;
        m_zip = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY | ZIP_CHECKCONS, &code);
        if (!m_zip) {
            zip_error_t error;
            zip_error_init_with_code(&error, code);
            m_problem = QString::fromUtf8(zip_error_strerror(&error));
            zip_error_fini(&error);
        }
    }
    OpenZip(const OpenZip &) = delete;
    OpenZip &operator=(const OpenZip &) = delete;
    ~OpenZip()
    {
        if (m_zip) {
            zip_discard(m_zip);
        }
    }

    [[nodiscard]] const QString &problem() const { return m_problem; }

    [[nodiscard]] QString comment() const
    {
        int length = 0;
        const char *text = zip_get_archive_comment(m_zip, &length, ZIP_FL_ENC_GUESS);
        return text ? QString::fromUtf8(text, length) : QString();
    }

    // Appends the files; false when there is a problem.
    bool read(std::vector<ZipMember> &members)
    {
        const zip_int64_t count = zip_get_num_entries(m_zip, 0);
        if (count > mostZipMembers) {
            m_problem = u"it holds %1 files"_s.arg(count);
            return false;
        }
        for (zip_int64_t i = 0; i < count; ++i) {
            const auto index = static_cast<zip_uint64_t>(i);
            ZipMember member {QString::fromUtf8(zip_get_name(m_zip, index, ZIP_FL_ENC_GUESS)), {}};
            if (!member.name.endsWith(u'/')) {
                if (!readMember(index, member.bytes)) {
                    return false;
                }
                members.push_back(std::move(member));
            }
        }
        return true;
    }

private:
    bool readMember(zip_uint64_t index, QByteArray &bytes)
    {
        constexpr qsizetype piece = 1 << 16;
        const std::unique_ptr<zip_file_t, CloseFile> file(zip_fopen_index(m_zip, index, 0));
        if (!file) {
            m_problem = QString::fromUtf8(zip_strerror(m_zip));
            return false;
        }
        QByteArray buffer(piece, Qt::Uninitialized);
        for (;;) {
            const zip_int64_t got = zip_fread(file.get(), buffer.data(), static_cast<zip_uint64_t>(piece));
            if (got < 0) {
                m_problem = QString::fromUtf8(zip_file_strerror(file.get()));
                return false;
            }
            if (got == 0) {
                return true;
            }
            m_unpacked += got;
            if (m_unpacked > largestArchive) {
                m_problem = tooLarge();
                return false;
            }
            bytes.append(QByteArrayView(buffer).first(got));
        }
    }

    zip_t *m_zip = nullptr;
    qint64 m_unpacked = 0;
    QString m_problem;
};

void addMember(zip_t *zip, const ZipMember &member, DateTime made)
{
    // A change of the log waits for it: quick rather than small.
    constexpr zip_uint32_t quick = 1;
    zip_source_t *source =
        zip_source_buffer(zip, member.bytes.constData(), static_cast<zip_uint64_t>(member.bytes.size()), 0);
    const zip_int64_t index =
        source ? zip_file_add(zip, member.name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (index < 0) {
        if (source) {
            zip_source_free(source);
        }
        throw packingError(zip_strerror(zip));
    }
    zip_set_file_compression(zip, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, quick);
    zip_file_set_mtime(zip, static_cast<zip_uint64_t>(index), made.seconds, 0);
}

QByteArray bytesOf(zip_source_t *source)
{
    zip_stat_t about;
    if (zip_source_stat(source, &about) < 0 || zip_source_open(source) < 0) {
        throw packingError("the archive cannot be read back");
    }
    const auto closing = qScopeGuard([source] { zip_source_close(source); });
    QByteArray bytes(static_cast<qsizetype>(about.size), Qt::Uninitialized);
    if (zip_source_read(source, bytes.data(), about.size) != static_cast<zip_int64_t>(about.size)) {
        throw packingError("the archive cannot be read back");
    }
    return bytes;
}

} // namespace

QByteArray zipBytes(const std::vector<ZipMember> &members, const QString &comment, DateTime made)
{
    zip_source_t *source = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_t *zip = source ? zip_open_from_source(source, ZIP_TRUNCATE, nullptr) : nullptr;
    if (!zip) {
        if (source) {
            zip_source_free(source);
        }
        throw packingError("no archive can be made");
    }
    auto discarding = qScopeGuard([zip] { zip_discard(zip); });
    zip_source_keep(source);
    const auto freeing = qScopeGuard([source] { zip_source_free(source); });
    const QByteArray words = comment.toUtf8();
    zip_set_archive_comment(zip, words.constData(), static_cast<zip_uint16_t>(words.size()));
    for (const ZipMember &member : members) {
        addMember(zip, member, made);
    }
    if (zip_close(zip) < 0) {
        throw packingError(zip_strerror(zip));
    }
    discarding.dismiss();
    return bytesOf(source);
}

ZipContent readZip(const QString &path, ZipReading reading)
{
    ZipContent content;
    if (QFileInfo(path).size() > largestArchive) {
        content.problem = tooLarge();
        return content;
    }
    OpenZip zip(path);
    if (zip.problem().isEmpty()) {
        content.comment = zip.comment();
        if (reading == ZipReading::Whole) {
            zip.read(content.members);
        }
    }
    content.problem = zip.problem();
    return content;
}

} // namespace quillon
