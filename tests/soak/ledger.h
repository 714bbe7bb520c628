#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

namespace quillon::soak {

/// What was promised to the user, kept outside the program: the receptions that have to be in the file, and
/// what each file of the folder may hold.
class Ledger
{
public:
    /// `root` is the folder of a case; its log is in `log`. What is there now counts as promised.
    explicit Ledger(const QString &root);

    /// Takes a line of a Teller.
    void take(const QByteArray &line);

    /// What is wrong with the folder; empty when every reception that was confirmed is in the log, nothing is
    /// in it that nobody stored, every file is one that it may be, and there is nothing else. What was not
    /// confirmed counts as it stands on the disk from now on.
    [[nodiscard]] QStringList problems();

    /// Receptions in the file on the disk.
    [[nodiscard]] int onDisk() const;
    /// How many receptions the program found at its last start, -1 before that; what it then had to say.
    [[nodiscard]] int started() const { return m_started; }
    [[nodiscard]] const QByteArray &messages() const { return m_messages; }
    /// The program starts anew.
    void restart();
    [[nodiscard]] const QByteArrayList &errors() const { return m_errors; }
    [[nodiscard]] const QByteArray &command() const { return m_command; }

private:
    struct Reception
    {
        QByteArray start;
        QByteArray note;
    };
    struct Intent
    {
        char kind = 0;
        QByteArray name;
        Reception reception;
    };

    void adopt();
    void keep(const Intent &intent);
    [[nodiscard]] QMap<QByteArray, QByteArray> files() const;
    [[nodiscard]] QStringList fileProblems(const QMap<QByteArray, QByteArray> &now) const;
    [[nodiscard]] QStringList logProblems(const QByteArray &log);

    QString m_root;
    QHash<QByteArray, Reception> m_sure;
    std::vector<Intent> m_intents;
    QHash<QByteArray, QByteArrayList> m_legal; ///< hashes by path; empty for a file that is not there
    QSet<QByteArray> m_hidden; ///< names that files have on their way to the disk
    QHash<QByteArray, QByteArray> m_growing; ///< what stood in the files that are added to
    int m_started = -1;
    QByteArray m_messages;
    QByteArray m_command;
    QByteArrayList m_errors;
};

} // namespace quillon::soak
