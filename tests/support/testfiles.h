#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace quillon::test {

/// Where files are kept in memory, for tests that write many thousands.
inline constexpr QStringView memoryDirectory = u"/dev/shm";

/// A directory of a test's own, gone with the test.
class TestDirectory
{
public:
    TestDirectory() = default;
    /// A directory in this one, or where all are when it cannot be written.
    explicit TestDirectory(const QString &parent);

    [[nodiscard]] QString path() const { return m_directory.path(); }
    [[nodiscard]] QString file(const QString &name) const { return m_directory.filePath(name); }

    /// Writes a file, making its folders.
    void write(const QString &name, const QByteArray &bytes) const;
    /// The bytes of a file; a null array when it cannot be read.
    [[nodiscard]] QByteArray read(const QString &name) const;
    /// All files and folders in it, sorted, hidden ones too.
    [[nodiscard]] QStringList names() const;

private:
    QTemporaryDir m_directory;
};

/// One logbook line of the current layout, with its CR LF.
[[nodiscard]] QByteArray logLine(const QByteArray &piCode, const QByteArray &dateTime, const QByteArray &freq,
    const QByteArray &rdsName, const QByteArray &country = "D", const QByteArray &transmitter = "Brocken");

} // namespace quillon::test
