#pragma once

#include "logfile.h"
#include "platform/files.h"
#include "supporttable.h"
#include "supportwindow.h"

#include <QFile>

#include <functional>

namespace quillon::bench {

/// What changes one entry is quick, and measured more often than other commands.
inline constexpr int changeRepetitions = 32;

/// The commands that change an entry, the undo of each and its redo, each beside the plain save of the log as
/// it is then.
class Changes
{
public:
    Changes(Table &table, Window &window, const QString &directory)
        : m_table(table)
        , m_window(window)
        , m_logbook(filePath(directory, u"RDSLog.log"_s))
        , m_plain(QFile::encodeName(filePath(directory, u"plain.log"_s)))
    {
    }
    void measure(const QString &name, const std::function<void()> &prepare, const QString &button)
    {
        Runs done;
        Runs undone;
        Runs redone;
        for (int i = 0; i < changeRepetitions; ++i) {
            prepare();
            const QByteArray before = readFile(m_logbook);
            run(done, [&] { m_window.click(button); });
            const QByteArray after = readFile(m_logbook);
            run(undone, [this] { m_window.trigger(u"menuEditUndo"_s); });
            if (after == before || readFile(m_logbook) != before) {
                qFatal("nothing was undone");
            }
            run(redone, [this] { m_window.trigger(u"menuEditRedo"_s); });
            if (readFile(m_logbook) != after) {
                qFatal("nothing was made again");
            }
        }
        m_table.change(qPrintable(name), done);
        m_table.change(qPrintable(u"undo: "_s + name), undone);
        m_table.change(qPrintable(u"redo: "_s + name), redone);
    }

private:
    void run(Runs &runs, const std::function<void()> &work) const
    {
        runs.times.push_back(measured(work));
        runs.beside.push_back(savePlainTime(m_plain, readFile(m_logbook)));
    }

    Table &m_table;
    Window &m_window;
    QString m_logbook;
    QByteArray m_plain;
};

} // namespace quillon::bench
