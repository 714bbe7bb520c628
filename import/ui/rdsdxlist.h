#pragma once

#include "platform/codepage.h"

#include <QDialog>

#include <functional>
#include <memory>

namespace quillon {

namespace Ui {
class rdsdxlist;
}

/// RDSDX Loggings: lists the daily logs of RDSDX and has the chosen one imported.
class rdsdxlist : public QDialog
{
    Q_OBJECT

public:
    /// Imports a file of the folder, named as it is listed; may throw a RuntimeError, which brings the window
    /// back.
    using Import = std::function<void(const QString &selectedFile)>;

    rdsdxlist(const CodePage &codePage, Import importRDSDXLogCnv, QWidget *parent = nullptr);
    ~rdsdxlist() override;

    /// Shows the window and lists the ".txt" files of `folder`, highlighting the last. Throws what
    /// populateDirBox throws.
    void start(const QString &folder);

    /// Lists the files of a pattern: a folder, "/*" and the ending of the names in any case. Throws when the
    /// folder cannot be read.
    void populateDirBox(const QString &pattern);

private:
    void List1_Click();
    void OKButton_Click();
    void CancelButton_Click();

    CodePage m_codePage;
    Import m_import;
    std::unique_ptr<Ui::rdsdxlist> ui;
};

} // namespace quillon
