#pragma once

#include <QDialog>

#include <memory>

namespace quillon {

namespace Ui {
class frmSplash;
}

/// The splash window, which is the about box as well.
class frmSplash : public QDialog
{
    Q_OBJECT

public:
    /// How the window is used.
    enum class Use {
        WhileLoading, ///< without frame and buttons
        About,
    };

    frmSplash(QWidget *parent, Use use, const QString &propagationUrl);
    ~frmSplash() override;

    /// The address of the radio-propagation page.
    void setLink(const QString &propagationUrl);

    /// Tells where the user's files are, with a button that opens the folder.
    void tellDirectory(const QString &directory);

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Form_Load();
    void Command1_Click();
    void Form_KeyPress();
    void Frame1_Click();
    void Label2_Click();
    void showFocusOfLink(bool focus);
    void openDirectory_Click();

    std::unique_ptr<Ui::frmSplash> m_ui;
    QString m_propagationUrl;
    QString m_directory;
};

} // namespace quillon
