#pragma once

#include "supportreference.h"
#include "supportservice.h"
#include "supportwindow.h"

#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

// What measures an evening: its answers to what the program asks, and its table.

namespace quillon::bench {

/// Answers every box that waits: types the next text into an input box, takes the file that was chosen,
/// presses Yes or OK. From `beStrict` on a run-time error ends the run: what was to be measured did not
/// happen.
class EveningAnswers : public QObject
{
public:
    EveningAnswers()
    {
        connect(&m_timer, &QTimer::timeout, this, [this] { look(); });
        m_timer.start(1);
    }
    /// Until then the start may tell that the log is full.
    void beStrict() { m_strict = true; }
    /// The texts of the next input boxes; a box beyond them gets what it offers.
    void type(const QStringList &texts) { m_texts = texts; }
    /// The file that is taken where one is asked for; it may be there already.
    void choose(const QString &path) { m_path = path; }
    /// The question that is answered with No.
    void decline(const QString &question) { m_declined = question; }

private:
    void look()
    {
        QWidget *box = QApplication::activeModalWidget();
        if (auto *input = qobject_cast<QInputDialog *>(box)) {
            if (!m_texts.isEmpty()) {
                input->setTextValue(m_texts.takeFirst());
            }
            input->accept();
        } else if (auto *message = qobject_cast<QMessageBox *>(box)) {
            if (m_strict && message->icon() == QMessageBox::Critical) {
                qFatal("%s", qPrintable(message->text()));
            }
            QAbstractButton *yes =
                message->button(message->text() == m_declined ? QMessageBox::No : QMessageBox::Yes);
            (yes ? yes : message->button(QMessageBox::Ok))->click();
        } else if (auto *file = qobject_cast<QFileDialog *>(box); file && !m_isTaken) {
            file->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(m_path);
            // Whether it is to be replaced is asked meanwhile.
            m_isTaken = true;
            QTimer::singleShot(0, file, [this, file] {
                file->findChild<QDialogButtonBox *>()->buttons().first()->click();
                m_isTaken = false;
            });
        }
    }

    QTimer m_timer;
    QStringList m_texts;
    QString m_path;
    QString m_declined;
    bool m_isTaken = false;
    bool m_strict = false;
};

/// The run cannot go on when what was to be measured did not happen.
inline void require(bool happened, const char *what)
{
    if (!happened) {
        qFatal("not measured: %s", what);
    }
}

/// The usual and the worst of some times, and how many times the work beside them that is.
class EveningTable
{
public:
    static void head(const char *title)
    {
        std::printf(
            "%-50s %10s %10s %10s %8s %8s\n", title, "usual ms", "worst ms", "reference", "ratio", "bar");
    }

    /// `beside` are the times of the same run that the bar counts in; a bar of 0 is none. Of both it is the
    /// median that counts, or what another part of them stays below.
    void row(const char *name, const std::vector<double> &times, const std::vector<double> &beside,
        double bar = 0, double part = half)
    {
        const double usual = quantileOf(times, part);
        const double plain = quantileOf(beside, part);
        const double ratio = usual / plain;
        const bool missed = bar > 0 && ratio > bar;
        std::printf("%-50s %10.1f %10.1f %10.1f %8.2f %8s%s\n", name, usual, std::ranges::max(times), plain,
            ratio, bar > 0 ? qPrintable(QString::number(bar)) : "-", missed ? "  MISSED" : "");
        std::fflush(stdout);
        m_missed = m_missed || missed;
    }
    /// Held to the reference work, which every timing takes a turn of.
    void row(const char *name, const std::vector<double> &times, double bar = 0)
    {
        row(name, times, m_references, bar);
        m_isRowDone = true;
    }
    void addReference()
    {
        if (m_isRowDone) {
            m_references.clear();
            m_isRowDone = false;
        }
        m_references.push_back(referenceTime());
    }

    [[nodiscard]] bool missed() const { return m_missed; }

private:
    std::vector<double> m_references; ///< of the row under way
    bool m_isRowDone = false;
    bool m_missed = false;
};

/// Milliseconds of processor time of the program alone that some work takes, drawing included.
[[nodiscard]] inline double ownTime(const Service &service, const std::function<void()> &work)
{
    settle();
    const double before = service.spent();
    const Times all = measured(work);
    return all.all - (service.spent() - before);
}

/// Milliseconds by the clock.
[[nodiscard]] inline double clockTime(const std::function<void()> &work)
{
    QElapsedTimer clock;
    clock.start();
    work();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

} // namespace quillon::bench
