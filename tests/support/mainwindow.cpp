#include "support/mainwindow.h"

#include "ui/looks.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <cerrno>

namespace quillon::test {

using namespace Qt::StringLiterals;

namespace {

int failing(int code)
{
    errno = code;
    return -1;
}

const QStringList &editableNames()
{
    static const QStringList names {u"Text1"_s, u"Text2"_s, u"Text3"_s, u"Combo3"_s, u"Text5"_s, u"Text6"_s,
        u"Text7"_s, u"Text8"_s, u"Text9"_s, u"Text10"_s, u"Combo1"_s, u"Combo2"_s};
    return names;
}

} // namespace

int FailingCalls::openNameless(const QByteArray &path, mode_t mode)
{
    return failOpen ? failing(failOpen) : FileCalls::openNameless(path, mode);
}

int FailingCalls::openNew(const QByteArray &path, mode_t mode)
{
    return failOpen ? failing(failOpen) : FileCalls::openNew(path, mode);
}

ssize_t FailingCalls::write(int file, QByteArrayView bytes)
{
    return failWrite ? failing(failWrite) : FileCalls::write(file, bytes);
}

int FailingCalls::sync(int file)
{
    return failSync ? failing(failSync) : FileCalls::sync(file);
}

int FailingCalls::rename(const QByteArray &from, const QByteArray &to)
{
    if (beforeRename) {
        beforeRename(to);
    }
    return failRename ? failing(failRename) : FileCalls::rename(from, to);
}

int FailingCalls::remove(const QByteArray &path)
{
    return failRemove ? failing(failRemove) : FileCalls::remove(path);
}

void MainWindow::start()
{
    stop();
    installLooks();
    m_form = std::make_unique<Form1>(Form1Options {directory.path(), QStringLiteral(QUILLON_SUPPLIED),
        Regional::fromEnvironment(), &calls, look.path(), backupFolder});
    m_form->Form_Load();
    m_form->show();
    if (!QTest::qWaitForWindowActive(m_form.get())) {
        qFatal("the window did not become active");
    }
}

void MainWindow::start(const QByteArray &logbook, const QByteArray &transmitters, const QByteArray &countries)
{
    if (!logbook.isNull()) {
        directory.write(u"RDSLog.log"_s, logbook);
    }
    if (!transmitters.isNull()) {
        directory.write(u"tx.lst"_s, transmitters);
    }
    if (!countries.isNull()) {
        directory.write(u"country.lst"_s, countries);
    }
    start();
}

void MainWindow::stop()
{
    m_form.reset();
}

QString MainWindow::text(QAnyStringView name)
{
    auto *control = find<QWidget>(name);
    if (const auto *edit = qobject_cast<QLineEdit *>(control)) {
        return edit->text();
    }
    if (const auto *notes = qobject_cast<QPlainTextEdit *>(control)) {
        return notes->toPlainText();
    }
    if (const auto *combo = qobject_cast<QComboBox *>(control)) {
        return combo->currentText();
    }
    if (const auto *label = qobject_cast<QLabel *>(control)) {
        return label->text();
    }
    qFatal("%s shows no text", qPrintable(name.toString()));
    return {};
}

QStringList MainWindow::fields()
{
    QStringList all;
    for (const QString &name : {u"Text9"_s, u"Text1"_s, u"Text8"_s, u"Text2"_s, u"Combo2"_s, u"Text3"_s,
             u"uid"_s, u"Combo3"_s, u"Text5"_s, u"Text6"_s, u"Text7"_s, u"Text10"_s}) {
        all += name + u'=' + text(name);
    }
    return all;
}

QString MainWindow::caption(QAnyStringView name)
{
    return find<QAbstractButton>(name)->text().remove(u'&');
}

bool MainWindow::enabled(QAnyStringView name)
{
    return find<QWidget>(name)->isEnabled();
}

QStringList MainWindow::yellow()
{
    QStringList names;
    for (const QString &name : editableNames()) {
        const QPalette palette = find<QWidget>(name)->palette();
        if (palette.color(QPalette::Base) == QColor(255, 255, 0)) {
            names += name;
        }
    }
    return names;
}

void MainWindow::type(QAnyStringView name, const QString &text)
{
    auto *field = find<QWidget>(name);
    if (!field->isEnabled()) {
        qFatal("%s is disabled: nobody can type into it", qPrintable(name.toString()));
    }
    field->setFocus(Qt::TabFocusReason);
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    for (const QChar letter : text) {
        if (letter == u'\n') {
            QTest::keyClick(field, Qt::Key_Return);
        } else {
            QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, letter, Qt::NoModifier);
        }
    }
}

void MainWindow::fill(const QStringList &namesAndTexts)
{
    for (qsizetype i = 0; i + 1 < namesAndTexts.size(); i += 2) {
        type(namesAndTexts.at(i), namesAndTexts.at(i + 1));
    }
}

void MainWindow::click(QAnyStringView button)
{
    QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton);
}

void MainWindow::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (!QApplication::activeWindow()) {
        // No window manager brings it back when a message box has closed.
        m_form->activateWindow();
        QTRY_VERIFY(QApplication::activeWindow() == m_form.get());
    }
    QWidget *target = QApplication::focusWidget();
    QTest::keyClick(target ? target : m_form.get(), key, modifiers);
}

void MainWindow::trigger(QAnyStringView action)
{
    find<QAction>(action)->trigger();
}

QString MainWindow::row(int row)
{
    QStringList cells;
    for (int column = 0; column < gridColumnCount; ++column) {
        cells += grid().text(row, column);
    }
    return cells.join(u'|');
}

QStringList MainWindow::piCodes()
{
    QStringList codes;
    for (int row = 1; row < grid().rows(); ++row) {
        codes += grid().text(row, GridColumn::PiCode);
    }
    return codes;
}

void MainWindow::clickRow(int row)
{
    const QModelIndex cell = grid().model()->index(row - 1, 1);
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, grid().visualRect(cell).center());
}

void MainWindow::clickHeading(int column)
{
    QHeaderView *header = grid().horizontalHeader();
    constexpr int withinSection = 20;
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
        {header->sectionViewportPosition(column) + withinSection, header->height() / 2});
}

bool MainWindow::isRowVisible(int row)
{
    const QRect rectangle = grid().visualRect(grid().model()->index(row - 1, 0));
    return rectangle.height() > 0 && rectangle.top() >= 0
        && rectangle.bottom() <= grid().viewport()->rect().bottom();
}

QStringList MainWindow::resultLines()
{
    QStringList lines;
    for (int line = 0; line < list().count(); ++line) {
        lines += list().text(line);
    }
    return lines;
}

QStringList MainWindow::copies() const
{
    return directory.names().filter(u".bak"_s);
}

bool isNow(const QString &text)
{
    constexpr qint64 fewSeconds = 5;
    const auto moment = parseDateTime(text, MonthNames::of(QLocale::c()));
    return moment && generalText(*moment) == text && UtcNow().seconds - moment->seconds >= 0
        && UtcNow().seconds - moment->seconds <= fewSeconds;
}

} // namespace quillon::test
