#pragma once

#include "support/testfiles.h"

#include <QProcess>
#include <QRgb>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QtEndian>

namespace quillon::test {

using namespace Qt::StringLiterals;

inline constexpr int patience = 30'000; // milliseconds

/// The program running on its own.
class Program
{
public:
    QProcess process;
    TestDirectory home;

    Program()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"QUILLON_DIR"_s);
        environment.insert(u"HOME"_s, home.path());
        environment.insert(u"XDG_DATA_HOME"_s, home.file(u"data"_s));
        environment.insert(u"XDG_STATE_HOME"_s, home.file(u"state"_s));
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(home.path());
    }
    ~Program()
    {
        process.kill();
        process.waitForFinished(patience);
    }
    void set(const QString &name, const QString &value)
    {
        QProcessEnvironment environment = process.processEnvironment();
        environment.insert(name, value);
        process.setProcessEnvironment(environment);
    }
    [[nodiscard]] bool start(
        const QStringList &arguments = {}, const QString &program = QStringLiteral(QUILLON_PROGRAM))
    {
        process.start(program, arguments);
        return process.waitForStarted(patience);
    }
    // What the ended program said, and how it ended.
    [[nodiscard]] bool ended() { return process.waitForFinished(patience); }
};

/// A display of its own.
class OwnScreen
{
public:
    OwnScreen() = default;
    OwnScreen(const OwnScreen &) = delete;
    OwnScreen &operator=(const OwnScreen &) = delete;
    ~OwnScreen()
    {
        m_manager.kill();
        m_manager.waitForFinished(patience);
        m_server.terminate();
        m_server.waitForFinished(patience);
    }
    [[nodiscard]] bool start()
    {
        // A window that goes while a key is down may leave it down: such a key must not be repeated (-r).
        m_server.start(u"Xvfb"_s,
            {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x800x24"_s, u"-noreset"_s, u"-r"_s,
                u"-fbdir"_s, m_picture.path()});
        return m_server.waitForStarted(patience) && m_server.waitForReadyRead(patience);
    }
    void give(Program &program)
    {
        program.set(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        program.set(u"DISPLAY"_s, name());
    }
    /// How many of its pixels have that colour now. The server keeps them in a file of the X window dump
    /// format: big-endian words of 32 bits, a table of colours, rows of pixels.
    [[nodiscard]] int pixelsOf(QRgb colour) const
    {
        const QByteArray dump = m_picture.read(u"Xvfb_screen0"_s);
        const auto word = [&](int place) {
            return static_cast<qsizetype>(qFromBigEndian<quint32>(dump.constData() + 4 * place));
        };
        constexpr int sizeOfHeader = 0;
        constexpr int height = 5;
        constexpr int bytesOfRow = 12;
        constexpr int colours = 19;
        constexpr qsizetype sizeOfColour = 12;
        const QByteArrayView pixels = QByteArrayView(dump).sliced(
            word(sizeOfHeader) + word(colours) * sizeOfColour, word(height) * word(bytesOfRow));
        int count = 0;
        for (qsizetype at = 0; at < pixels.size(); at += qsizetype {sizeof(QRgb)}) {
            count += (qFromLittleEndian<QRgb>(pixels.data() + at) & RGB_MASK) == (colour & RGB_MASK) ? 1 : 0;
        }
        return count;
    }
    /// Starts a window manager, without which no window can be minimized.
    [[nodiscard]] bool manageWindows()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, name());
        m_manager.setProcessEnvironment(environment);
        m_manager.start(u"openbox"_s, {u"--sm-disable"_s});
        // It has come to work when it tells of its desktops.
        return m_manager.waitForStarted(patience)
            && QTest::qWaitFor(
                [&] {
                    QProcess ask;
                    ask.setProcessEnvironment(environment);
                    ask.start(u"xdotool"_s, {u"get_num_desktops"_s});
                    return ask.waitForFinished(patience) && ask.exitCode() == 0;
                },
                patience);
    }

private:
    [[nodiscard]] const QString &name()
    {
        if (m_name.isEmpty()) {
            m_name = u':' + QString::fromLatin1(m_server.readLine().trimmed());
        }
        return m_name;
    }

    TestDirectory m_picture;
    QProcess m_server;
    QProcess m_manager;
    QString m_name;
};

/// Whether the program shows a window with this title now; it is given the focus and the keys, if any, with
/// blanks between.
inline bool hasWindow(const Program &program, const QString &title, const QString &key = {})
{
    QStringList words {u"search"_s, u"--all"_s, u"--onlyvisible"_s, u"--pid"_s,
        QString::number(program.process.processId()), u"--name"_s, title};
    if (!key.isEmpty()) {
        words += QStringList {u"windowfocus"_s, u"key"_s} + key.split(u' ');
    }
    QProcess search;
    search.setProcessEnvironment(program.process.processEnvironment());
    search.start(u"xdotool"_s, words);
    return search.waitForFinished(patience) && search.exitCode() == 0;
}

/// Minimizes the program's window with this title; false when there is none.
inline bool minimized(const Program &program, const QString &title)
{
    QProcess search;
    search.setProcessEnvironment(program.process.processEnvironment());
    search.start(u"xdotool"_s,
        {u"search"_s, u"--all"_s, u"--onlyvisible"_s, u"--pid"_s,
            QString::number(program.process.processId()), u"--name"_s, title, u"windowminimize"_s});
    return search.waitForFinished(patience) && search.exitCode() == 0;
}

/// Presses a key in the program's window with this title as soon as it is there, until the window is gone:
/// one that has just come may not hear the first.
inline bool typed(const Program &program, const QString &title, const QString &key)
{
    constexpr int pause = 5'000; // milliseconds: a second press could meet the window that comes next
    return QTest::qWaitFor([&] { return hasWindow(program, title); }, patience)
        && QTest::qWaitFor(
            [&] {
                if (!hasWindow(program, title, key)) {
                    return !hasWindow(program, title);
                }
                // Twice: a search that fails on a busy machine is no window that has gone.
                return QTest::qWaitFor(
                    [&] { return !hasWindow(program, title) && !hasWindow(program, title); }, pause);
            },
            patience);
}

} // namespace quillon::test
