#pragma once

#include "import/importmemory.h"
#include "import/importsession.h"
#include "platform/filecalls.h"

#include <QDialog>
#include <QStringList>

#include <functional>
#include <memory>

namespace quillon {

namespace Ui {
class importFile;
}

class ImportModel;

/// Receptions from a File: shows what files of other programs would bring into the log, and brings it in.
class importFile : public QDialog
{
    Q_OBJECT

public:
    /// Commits the change under that name; may throw the run-time error of a failing save.
    using BringIn = std::function<void(const LogChange &, const QString &name)>;

    /// `log` has to outlive the window. What the listener says once is kept in `memoryFile`, if it has a
    /// name.
    importFile(const Logbook &log, const ImportSurroundings &surroundings, const QString &memoryFile,
        BringIn bringIn, QWidget *parent = nullptr, FileCalls &calls = FileCalls::real());
    ~importFile() override;

    /// Shows what is in files and folders. Throws for what is too much in all; what was shown before stays.
    void show(const QStringList &paths);
    using QDialog::show;
    /// Entries have changed: compares anew.
    void logChanged();

Q_SIGNALS:
    /// An import is over: what became of it, on one line.
    void summary(const QString &text);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    // importfile_format.cpp: how the files are read
    void offerFormats();
    void wireFormats();
    void showFormats();
    void setForShown(const std::function<void(FormatChoice &)> &set);
    void askColumns();
    void keepHeadings();
    [[nodiscard]] std::vector<std::size_t> shownFiles() const;

    void wire();
    void chooseFiles();
    void chooseFolder();
    void readAgain();
    void showSession();
    void showCounts();
    void offerActions();
    void actOnChosen(ImportAction action);
    void turnTicks();
    void importGo_Click();
    void saveRefused();

    const Logbook &m_log;
    ImportMemory m_memory;
    ImportSession m_session;
    BringIn m_bringIn;
    FileCalls &m_calls;
    std::unique_ptr<Ui::importFile> ui;
    ImportModel *m_model;
    bool m_done = false; ///< the report is shown
};

} // namespace quillon
