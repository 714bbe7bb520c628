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
