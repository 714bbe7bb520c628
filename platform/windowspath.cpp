#include "platform/windowspath.h"

#include "platform/files.h"

#include <QDir>
#include <QFileInfo>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

bool isDriveLetter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

QString withoutLastSlash(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/')) {
        path.chop(1);
    }
    return path;
}

QString below(const QString &directory, const QString &name)
{
    return directory.endsWith(u'/') ? QString(directory + name) : filePath(directory, name);
}

// The folder of this name in `directory`, whatever the case of its name; as spelled when there is none.
QString folderBelow(const QString &directory, const QString &name)
{
    QString exact = below(directory, name);
    if (QFileInfo(exact).isDir()) {
        return exact;
    }
    const QStringList all = QDir(directory).entryList(QDir::Dirs | QDir::Hidden | QDir::System, QDir::Name);
    for (const QString &other : all) {
        if (other.compare(name, Qt::CaseInsensitive) == 0) {
            return below(directory, other);
        }
    }
    return exact;
}

// What stands for a drive: the folder that its link in `dosdevices` leads to, or the link when it leads
// nowhere.
QString driveFolder(const WindowsPlaces &places, QChar letter)
{
    const QString link = places.prefix + u"/dosdevices/"_s + letter.toLower() + u':';
    const QString target = QDir::cleanPath(QFileInfo(link).symLinkTarget());
    return QFileInfo(target).isDir() ? target : link;
}

} // namespace

WindowsPlaces WindowsPlaces::ofProcess()
{
    const QString home = QDir::homePath();
    const QString prefix = qEnvironmentVariable("WINEPREFIX");
    return {prefix.isEmpty() ? QString(home + u"/.wine"_s) : withoutLastSlash(prefix), home};
}

QString resolveDirectory(const QString &setting, const WindowsPlaces &places)
{
    const QString trimmed = setting.trimmed();
    if (trimmed.isEmpty()) {
        return {};
    }
    if (trimmed.startsWith(u'/')) {
        return withoutLastSlash(trimmed);
    }
    if (trimmed == u'~' || trimmed.startsWith("~/"_L1)) {
        return withoutLastSlash(places.home + trimmed.sliced(1));
    }
    QString path = trimmed;
    path.replace(u'\\', u'/');
    QString directory;
    if (path.startsWith("//"_L1)) {
        directory = places.prefix + u"/dosdevices/unc"_s;
    } else if (path.size() >= 2 && isDriveLetter(path[0]) && path[1] == u':') {
        directory = driveFolder(places, path[0]);
        path = path.sliced(2);
    } else {
        directory = driveFolder(places, u'c');
    }
    // ".." never climbs out of the drive.
    const QStringList parts = QDir::cleanPath(u'/' + path).split(u'/', Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        if (part != ".."_L1) {
            directory = folderBelow(directory, part);
        }
    }
    return directory;
}

} // namespace quillon
