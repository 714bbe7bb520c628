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

/// The files below the folder of a case that the program promises, by their paths: those of `log`, `state`
/// and `out`, and the passwords of receivers.
[[nodiscard]] QMap<QByteArray, QByteArray> filesOfCase(const QString &root);

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
    /// How often the user has been told since the beginning that something is done.
    [[nodiscard]] int confirmed() const { return m_confirmed; }

private:
    /// The fields of its line, Teller::anything for one that may be whatever it is.
    using Reception = QByteArrayList;
    using Receptions = QHash<QByteArray, Reception>; ///< by name
    struct Intent
    {
        char kind = 0;
        QByteArray name; ///< of a reception, or of the backup that is brought back
        Reception reception;
        int field = 0; ///< of it, which becomes this text
        QByteArray text;
    };

    void adopt();
    void keep(const Intent &intent);
    void started(const QByteArray &receptions, const QByteArray &messages);
    void replacing(const QByteArray &path, const QByteArray &hash);
    void replaced(const QByteArray &path);
    [[nodiscard]] QByteArray inLog(const char *name) const;
    [[nodiscard]] bool hasHappened(const Intent &intent, const Receptions &there) const;
    void forget(const QByteArrayList &fields);
    void appending(const QByteArray &path);
    [[nodiscard]] QStringList fileProblems(const QMap<QByteArray, QByteArray> &now) const;
    [[nodiscard]] QStringList logProblems(const QByteArray &log);

    QString m_root;
    Receptions m_sure;
    QHash<QByteArray, Receptions> m_backups; ///< by path: what was in the log when it was made
    std::vector<Intent> m_intents;
    QHash<QByteArray, QByteArrayList> m_legal; ///< hashes by path; empty for a file that is not there
    /// Names that files have on their way to the disk. What a kill leaves of them may stay until the program
    /// has promised to remove it.
    QSet<QByteArray> m_hidden;
    QHash<QByteArray, QByteArray> m_growing; ///< what stood in the files that are added to
    int m_started = -1;
    int m_confirmed = 0;
    QByteArray m_messages;
    QByteArray m_command;
    QByteArrayList m_errors;
};

} // namespace quillon::soak
