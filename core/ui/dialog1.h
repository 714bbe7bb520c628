#pragma once

#include "platform/codepage.h"

#include <QDialog>

#include <memory>

namespace quillon {

namespace Ui {
class Dialog1;
}

/// Quick Add: logs a station from just its frequency, PI code and name.
class Dialog1 : public QDialog
{
    Q_OBJECT

public:
    /// `codePage` is the one that the log is written in.
    Dialog1(const CodePage &codePage, QWidget *parent);
    ~Dialog1() override;

    /// Offers the PI code and the frequency of the main form; an empty one leaves what stands there. The
    /// frequency is chosen whole, and the PI code is said to be from the form until it is touched.
    void offer(const QString &freq, const QString &piCode);

Q_SIGNALS:
    /// OK was pressed on a complete entry; the PI code is in upper case.
    void quickAdd(const QString &freq, const QString &piCode, const QString &rdsName);

private:
    void OKButton_Click();
    void CancelButton_Click();
    void showFromForm(bool shown);

    std::unique_ptr<Ui::Dialog1> m_ui;
};

} // namespace quillon
