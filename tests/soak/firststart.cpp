#include "firststart.h"

#include "core/ui/form1.h"
#include "platform/applicationdirectory.h"
#include "platform/runtimeerror.h"
#include "support/dialogs.h"
#include "user.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace quillon::soak {

using namespace Qt::StringLiterals;

FirstStart::FirstStart(const QString &root)
    : m_root(root)
{
    QDir().mkpath(root + u"/first"_s);
}

QString FirstStart::run(FileCalls &calls) const
{
    const QString supplied = QStringLiteral(QUILLON_SUPPLIED);
    const QString folder = m_root + u"/first/quillon"_s;
    const Regional regional = Regional::fromEnvironment();
    test::DialogAnswers answers;
    try {
        prepareApplicationDirectory(folder, supplied, regional.codePage, calls);
    } catch (const RuntimeError &error) {
        return error.text();
    }
    Form1 form(Form1Options {folder, supplied, regional, &calls, m_root + u"/look"_s, backupsBelow(m_root)});
    form.Form_Load();
    form.show();
    QCoreApplication::processEvents();
    return answers.takeTexts().join(u'\n');
}

QString FirstStart::unlike(const QMap<QString, QByteArray> &whole) const
{
    const auto now = files();
    for (const auto &[path, bytes] : now.asKeyValueRange()) {
        if (!path.contains(u"/."_s) && (!whole.contains(path) || whole.value(path) != bytes)) {
            return path + u" is not as it has to be"_s;
        }
    }
    const QStringList supplied = QDir(QStringLiteral(QUILLON_SUPPLIED)).entryList(QDir::Files);
    for (const QString &name : supplied) {
        if (now.contains(u"first/quillon"_s) && !now.contains(u"first/quillon/"_s + name)) {
            return u"the folder is there without "_s + name;
        }
    }
    return {};
}

QMap<QString, QByteArray> FirstStart::files() const
{
    QMap<QString, QByteArray> files;
    QDirIterator walk(m_root + u"/first"_s,
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        const bool isFile = walk.fileInfo().isFile() && file.open(QIODevice::ReadOnly);
        files.insert(QDir(m_root).relativeFilePath(walk.filePath()), isFile ? file.readAll() : QByteArray());
    }
    return files;
}

} // namespace quillon::soak
