#pragma once

#include "core/config.h"
#include "core/logrows.h"
#include "document/logdocument.h"
#include "platform/filecalls.h"
#include "platform/regional.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <memory>
#include <vector>

namespace quillon::soak {

/// Everything that writes files, without a window: one folder with a log of so many receptions, and what can
/// be done to it.
class Works
{
public:
    Works(const QString &folder, int receptions, FileCalls &calls);

    /// Something that writes; it throws the run-time error of what failed.
    struct Work
    {
        const char *name;
        void (Works::*run)();
    };
    [[nodiscard]] static const std::vector<Work> &all();

    /// Takes back what a work has changed, in memory and on the disk.
    void reset();
    /// The files of the folder as reset leaves them.
    [[nodiscard]] const QMap<QString, QByteArray> &before() const { return m_before; }
    [[nodiscard]] QString pathOf(const QString &name) const { return m_folder + u'/' + name; }
    /// The files that the works write, by their paths below the folder.
    [[nodiscard]] QMap<QString, QByteArray> files() const;
    /// Saves what a failed work has left in memory alone.
    void saveUnsaved() { m_document->saveUnsaved(); }
    /// True when the log's file holds what is in memory.
    [[nodiscard]] bool isLogStored() const;

private:
    void saveLog();
    void saveSites();
    void saveSettings();
    void exportTransmitters();
    void exportLog();
    void exportPages();
    void exportText();
    void exportShown();
    void backUp();
    void open();

    QString m_folder;
    FileCalls &m_calls;
    Regional m_regional;
    Config m_config;
    std::unique_ptr<LogDocument> m_document;
    std::unique_ptr<LogRows> m_rows;
    QMap<QString, QByteArray> m_before;
};

} // namespace quillon::soak
