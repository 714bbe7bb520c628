#pragma once

#include <QDialog>

#include <memory>

namespace quillon {

namespace Ui {
class ScratchPad;
}

class Config;

/// A free note, kept in the configuration file.
class ScratchPad : public QDialog
{
    Q_OBJECT

public:
    ScratchPad(QWidget *parent, Config &config);
    ~ScratchPad() override;

    /// Fills an empty window with the note that is kept; one that holds text is left as it is.
    void offerKeptNote();

private:
    void ScratchPad_OKButton_Click();
    void CancelButton_Click();

    std::unique_ptr<Ui::ScratchPad> m_ui;
    Config &m_config;
    QString m_offered; ///< the note as it was kept, each blank and line end as it stood
};

} // namespace quillon
