#pragma once

#include "core/config.h"
#include "geo/converter.h"

#include <QDialog>

#include <memory>

namespace quillon {

namespace Ui {
class Dialog;
}

class ProblemLabel;

/// The converter window: one position as decimal degrees, as degrees and minutes and as a Maidenhead locator.
class Dialog : public QDialog
{
    Q_OBJECT

public:
    /// Shows the home location when one is set, otherwise a sample. Modeless; deletes itself when closed.
    explicit Dialog(const Settings &settings, QWidget *parent = nullptr);
    ~Dialog() override;

    /// Says below the decimal degrees why they were not taken; nothing with an empty text.
    void tell(const QString &problem);

Q_SIGNALS:
    /// The texts of the decimal degrees, as they stand, are wanted in the entry form.
    void sendToLogBook(const QString &latitude, const QString &longitude);

private:
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Text7_Change();

    void connectFrames();
    void clearProblems();
    [[nodiscard]] PositionParts latitudeParts() const;
    [[nodiscard]] PositionParts longitudeParts() const;
    void showLatitudeParts(const PositionParts &parts);
    void showLongitudeParts(const PositionParts &parts);

    std::unique_ptr<Ui::Dialog> ui;
};

} // namespace quillon
