#include "support/testfiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quillon::test {

using namespace Qt::StringLiterals;

TestDirectory::TestDirectory(const QString &parent)
    : m_directory((QFileInfo(parent).isWritable() ? parent : QDir::tempPath()) + u"/quillon-XXXXXX"_s)
{
}

void TestDirectory::write(const QString &name, const QByteArray &bytes) const
{
    const QString path = file(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

QByteArray TestDirectory::read(const QString &name) const
{
    QFile in(file(name));
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

QStringList TestDirectory::names() const
{
    return QDir(path()).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

QByteArray logLine(const QByteArray &piCode, const QByteArray &dateTime, const QByteArray &freq,
    const QByteArray &rdsName, const QByteArray &country, const QByteArray &transmitter)
{
    return piCode + '|' + dateTime + "|Es|"_ba + freq + '|' + transmitter + '|' + country + "||"_ba + rdsName
        + "|10||||\r\n"_ba;
}

} // namespace quillon::test
