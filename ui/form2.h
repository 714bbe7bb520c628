#pragma once

#include <QDialog>

#include <memory>

class QLineEdit;

namespace quillon {

namespace Ui {
class Form2;
}

class Config;
class ScrolledPage;

/// The setup window: edits the settings of the configuration file.
class Form2 : public QDialog
{
    Q_OBJECT

public:
    /// Shows the settings as they are held in memory. Modeless; deletes itself when closed.
    Form2(QWidget *parent, Config &config);
    ~Form2() override;

Q_SIGNALS:
    /// The settings were written and read again.
    void saved();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Form2_Command1_Click();
    void Form2_Command2_Click();
    void Form2_rdsdir_LostFocus();
    void fill();
    void alignLabels();
    void showHints();
    void browse(QLineEdit *field, const QString &title);

    std::unique_ptr<Ui::Form2> m_ui;
    Config &m_config;
    ScrolledPage *m_page = nullptr;
};

} // namespace quillon
