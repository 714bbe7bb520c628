#pragma once

#include "ledger.h"
#include "session.h"
#include "user.h"

#include "platform/filecalls.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>
#include <vector>

namespace quillon::soak {

/// What the windows of the program save, apart from the log and its exports: pictures, tables, lists,
/// passwords. Each can be saved again and again, with nothing changed in between.
class WindowSaves
{
public:
    /// Starts the program on a new folder.
    WindowSaves(const QString &root, FileCalls &calls);

    struct Save
    {
        const char *name;
        void (User::*run)();
        int number; ///< of what is made up for it; a command that can do two things does the other one with
                    ///< odd
    };
    [[nodiscard]] static const std::vector<Save> &all();

    /// Has this saved, with nothing in its way.
    void prepare(const Save &save);
    /// How many bytes the files have that it writes.
    [[nodiscard]] qint64 size() const;
    /// Takes back on the disk what it has changed.
    void restore() const;
    /// Has it saved once more; true when it was done.
    bool run(const Save &save);
    /// What is wrong now with the files, or with what the user was told; `enough` says whether there was
    /// room, where that is known.
    [[nodiscard]] QString problem(std::optional<bool> enough) const;

private:
    [[nodiscard]] bool tellsWhich() const;

    QString m_root;
    QByteArray m_told; ///< the last error
    Teller m_teller;
    Session m_session;
    QMap<QByteArray, QByteArray> m_before;
    QMap<QByteArray, QByteArray> m_whole;
};

} // namespace quillon::soak
