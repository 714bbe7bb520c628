#include "user.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QDateTime>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>

namespace quillon::soak {

using namespace Qt::StringLiterals;

QByteArrayList User::addOne()
{
    const int number = m_next++;
    type(nameOf(number), dateOf(number));
    QByteArrayList fields = fieldsOf(number, "F201", "105.5");
    fields[Field::Country] = "F";
    if (m_random.bounded(4) == 0) {
        const QString site = u"Site %1"_s.arg(number);
        set(u"Text5"_s, site);
        set(u"Text7"_s, u"48.85"_s);
        set(u"Text10"_s, u"2.29"_s);
        fields[Field::Transmitter] = site.toLatin1();
    }
    m_teller.adding(fields);
    click(u"Command1"_s);
    finish();
    return fields;
}

void User::add()
{
    (void)addOne();
}

void User::quickAdd()
{
    const int number = m_next++;
    click(u"Command14"_s);
    const QPointer<QWidget> window = find<QWidget>(u"Dialog1"_s);
    find<QLineEdit>(*window, u"Text1"_s)->setText(u"98.5"_s);
    find<QLineEdit>(*window, u"Text2"_s)->setText(u"F202"_s);
    find<QLineEdit>(*window, u"Text3"_s)->setText(nameOf(number));
    // It is heard now, whenever that is.
    QByteArrayList fields = fieldsOf(number, "F202", "98.5");
    fields[Field::DateTime] = Teller::anything.toByteArray();
    m_teller.adding(fields);
    click(*window, u"OKButton"_s);
    finish();
    if (window) {
        window->close();
    }
}

void User::update()
{
    const QString name = choose();
    if (name.isEmpty()) {
        return;
    }
    const QString note = u"note %1"_s.arg(m_next++);
    set(u"Text3"_s, note);
    m_teller.setting(name.toLatin1(), Field::Notes, note.toLatin1());
    click(u"Command3"_s);
    finish();
}

void User::editMany()
{
    const QStringList names = chooseSome();
    if (names.isEmpty()) {
        return;
    }
    const QPointer<QWidget> window = open(u"menuEditMany"_s, u"editMany"_s);
    const QString note = u"note %1"_s.arg(m_next++);
    find<QCheckBox>(*window, u"tickNotes"_s)->click();
    find<QPlainTextEdit>(*window, u"valueNotes"_s)->insertPlainText(note);
    for (const QString &name : names) {
        m_teller.setting(name.toLatin1(), Field::Notes, note.toLatin1());
    }
    click(*window, u"OKButton"_s);
    finish();
    if (window) {
        window->close();
    }
}

void User::remove()
{
    const QString name = choose();
    if (!name.isEmpty()) {
        m_teller.removing(name.toLatin1());
        click(u"Command15"_s);
        finish();
    }
}

void User::removeMany()
{
    const QStringList names = chooseSome();
    for (const QString &name : names) {
        m_teller.removing(name.toLatin1());
    }
    if (!names.isEmpty()) {
        m_answers->press(QMessageBox::Yes);
        click(u"Command15"_s);
        finish();
    }
}

void User::undoAndRedo()
{
    const QByteArrayList fields = addOne();
    if (m_failed) {
        return;
    }
    m_teller.removing(fields.at(Field::RdsName));
    trigger(u"menuEditUndo"_s);
    finish();
    m_teller.adding(fields);
    trigger(u"menuEditRedo"_s);
    finish();
}

void User::distances()
{
    m_teller.changing({Field::Dist});
    click(u"Command10"_s);
    finish();
}

// Makes a backup where the list of backups looks for them.
void User::backUpFor(const QWidget &list)
{
    const QString folder = find<QLabel>(list, u"backupFolder"_s)->text();
    QDir().mkpath(folder);
    chooseFile(folder + u"/2020-01-01 000000.zip"_s);
    click(list, u"backupNow"_s);
    finish();
}

void User::restore()
{
    add();
    const QPointer<QWidget> window = open(u"menuFileBackups"_s, u"fileBackups"_s);
    auto *backups = find<QAbstractItemView>(*window, u"backupList"_s);
    if (!m_failed && backups->model()->rowCount() == 0) {
        backUpFor(*window);
    }
    if (!m_failed) {
        // There is something to take back.
        add();
    }
    if (!m_failed) {
        const QModelIndex chosen = backups->model()->index(m_random.bounded(backups->model()->rowCount()), 0);
        backups->setCurrentIndex(chosen);
        const QDateTime made = QDateTime::fromString(chosen.data().toString(), u"dd/MM/yyyy hh:mm:ss"_s);
        m_teller.restoring((find<QLabel>(*window, u"backupFolder"_s)->text() + u'/'
            + made.toString(u"yyyy-MM-dd hhmmss"_s) + u".zip"_s)
                               .toUtf8());
        m_answers->press(QMessageBox::Yes);
        click(*window, u"backupRestore"_s);
        finish();
    }
    if (window) {
        window->close();
    }
}

const std::vector<User::Command> &User::commands()
{
    static const std::vector<Command> all {
        {"Add", &User::add, true},
        {"Quick Add", &User::quickAdd, true},
        {"Update", &User::update, true},
        {"edit of many", &User::editMany, true},
        {"Delete", &User::remove, true},
        {"Delete of many", &User::removeMany, true},
        {"Undo and Redo", &User::undoAndRedo},
        {"distances", &User::distances},
        {"Restore", &User::restore},
        {"RDS Spy import", &User::importSpy},
        {"RDSDX import", &User::importDx},
        {"file import", &User::importAFile},
        {"refused lines", &User::importWithRefused},
        {"station list", &User::importStations},
        {"automatic search", &User::autoSearch},
        {"taking over", &User::takeOver},
        {"upload", &User::upload},
        {"log from a receiver", &User::logHeard, true},
        {"automatic log", &User::logByItself, true},
        {"transmitters as KML", &User::exportTransmitters},
        {"log as KML", &User::exportLog},
        {"web pages", &User::exportPages},
        {"text", &User::exportText},
        {"shown receptions", &User::exportShown},
        {"setup", &User::setUp},
        {"scratch pad", &User::writeScratchPad},
        {"password of a receiver", &User::keepReceiver},
        {"backup", &User::backUp},
        {"picture of statistics", &User::pictureStatistics},
        {"collection as CSV", &User::saveCollection},
        {"picture of the collection", &User::pictureCollection},
        {"picture of the map", &User::pictureMap},
    };
    return all;
}

} // namespace quillon::soak
