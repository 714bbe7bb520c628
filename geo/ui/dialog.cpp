#include "geo/ui/dialog.h"

#include "geo/coordinates.h"
#include "geo/maidenhead.h"
#include "platform/numbers.h"
#include "txdb/distances.h"
#include "ui/calmcombos.h"
#include "ui/guard.h"
#include "ui/onelinefields.h"
#include "ui/problemlabel.h"
#include "ui_dialog.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// The Ochsenkopf, one of the great FM transmitter sites of central Europe.
constexpr QStringView sampleLatitude = u"50.0309";
constexpr QStringView sampleLongitude = u"11.8083";

bool showsHome(const Settings &settings)
{
    return homeIsSet(settings) && decimalProblem(settings.homeLatitude, true).isEmpty()
        && decimalProblem(settings.homeLongitude, false).isEmpty();
}

double degrees(const QLineEdit &field)
{
    return numeric(field.text()).value_or(0);
}

QLineEdit *boxOf(
    const PartsProblem &problem, QLineEdit *degreesBox, QLineEdit *minutesBox, QLineEdit *hundredthsBox)
{
    switch (problem.piece) {
    case PartsProblem::Piece::Minutes:
        return minutesBox;
    case PartsProblem::Piece::Hundredths:
        return hundredthsBox;
    case PartsProblem::Piece::Degrees:
        break;
    }
    return degreesBox;
}

void goTo(QLineEdit &field)
{
    field.setFocus();
    field.selectAll();
}

} // namespace

Dialog::Dialog(const Settings &settings, QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::Dialog>())
{
    ui->setupUi(this);
    keepFieldsOnOneLine(*this);
    keepCombosCalm(*this);
    setAttribute(Qt::WA_DeleteOnClose);
    // The fields of all three frames begin at one edge.
    ui->locatorLabel->setMinimumWidth(ui->longitudeLabel->sizeHint().width());
    const bool home = showsHome(settings);
    ui->Text12->setText(home ? settings.homeLatitude : sampleLatitude.toString());
    ui->Text9->setText(home ? settings.homeLongitude : sampleLongitude.toString());
    Command1_Click();
    connectFrames();
}

Dialog::~Dialog() = default;

void Dialog::connectFrames()
{
    const auto onClick = [this](QPushButton *button, void (Dialog::*handler)()) {
        connect(button, &QPushButton::clicked, this,
            [this, handler] { guarded(this, [this, handler] { (this->*handler)(); }); });
    };
    onClick(ui->Command1, &Dialog::Command1_Click);
    onClick(ui->Command2, &Dialog::Command2_Click);
    onClick(ui->Command3, &Dialog::Command3_Click);
    onClick(ui->Command4, &Dialog::Command4_Click);
    connect(ui->CancelButton, &QPushButton::clicked, this, &Dialog::close);
    connect(ui->Text7, &QLineEdit::textChanged, this, &Dialog::Text7_Change);

    struct Frame
    {
        QPushButton *convert;
        QList<QLineEdit *> fields;
        ProblemLabel *problem;
    };
    const QList<Frame> frames {
        {ui->Command1, {ui->Text12}, ui->Text12Problem},
        {ui->Command1, {ui->Text9}, ui->Text9Problem},
        {ui->Command3, {ui->Text1, ui->Text2, ui->Text3}, ui->Text1Problem},
        {ui->Command3, {ui->Text4, ui->Text5, ui->Text6}, ui->Text4Problem},
        {ui->Command2, {ui->Text7}, ui->Text7Problem},
    };
    for (const Frame &frame : frames) {
        for (QLineEdit *field : frame.fields) {
            connect(field, &QLineEdit::returnPressed, frame.convert, [frame] { frame.convert->click(); });
            connect(field, &QLineEdit::textEdited, frame.problem, &ProblemLabel::clearProblem);
        }
    }
}

// Convert: from decimal degrees to the other two forms.
void Dialog::Command1_Click()
{
    clearProblems();
    const QString wrongLatitude = decimalProblem(ui->Text12->text(), true);
    const QString wrongLongitude = decimalProblem(ui->Text9->text(), false);
    if (!wrongLatitude.isEmpty() || !wrongLongitude.isEmpty()) {
        ui->Text12Problem->showProblem(wrongLatitude, ui->Text12);
        ui->Text9Problem->showProblem(wrongLongitude, ui->Text9);
        goTo(wrongLatitude.isEmpty() ? *ui->Text9 : *ui->Text12);
        return;
    }
    const double latitude = degrees(*ui->Text12);
    const double longitude = degrees(*ui->Text9);
    ui->Text7->setText(convertDecimalLatLonToMaidenhead(latitude, longitude));
    showLatitudeParts(splitCompact(convertDecimaltoLatORLon(latitude, true, false)));
    showLongitudeParts(splitCompact(convertDecimaltoLatORLon(longitude, false, false)));
}

// Convert: from degrees and minutes to the other two forms.
void Dialog::Command3_Click()
{
    clearProblems();
    const PartsProblem wrongLatitude = partsProblem(latitudeParts(), true);
    const PartsProblem wrongLongitude = partsProblem(longitudeParts(), false);
    if (!wrongLatitude.text.isEmpty() || !wrongLongitude.text.isEmpty()) {
        QLineEdit *latitudeBox = boxOf(wrongLatitude, ui->Text1, ui->Text2, ui->Text3);
        QLineEdit *longitudeBox = boxOf(wrongLongitude, ui->Text4, ui->Text5, ui->Text6);
        ui->Text1Problem->showProblem(wrongLatitude.text, latitudeBox);
        ui->Text4Problem->showProblem(wrongLongitude.text, longitudeBox);
        goTo(wrongLatitude.text.isEmpty() ? *longitudeBox : *latitudeBox);
        return;
    }
    for (QLineEdit *box : {ui->Text3, ui->Text6}) {
        box->setText(fullHundredths(box->text()));
    }
    const double latitude = convertRXLatORLonToDecimal(compactText(latitudeParts()), true);
    const double longitude = convertRXLatORLonToDecimal(compactText(longitudeParts()), false);
    ui->Text12->setText(plainText(latitude));
    ui->Text9->setText(plainText(longitude));
    ui->Text7->setText(convertDecimalLatLonToMaidenhead(latitude, longitude));
}

// Convert: from the locator to the other two forms.
void Dialog::Command2_Click()
{
    clearProblems();
    const QString wrong = locatorProblem(ui->Text7->text());
    if (!wrong.isEmpty()) {
        ui->Text7Problem->showProblem(wrong, ui->Text7);
        goTo(*ui->Text7);
        return;
    }
    QString latitude;
    QString longitude;
    maidenheadToLatLon(ui->Text7->text(), latitude, longitude);
    showLatitudeParts(splitCompact(latitude));
    showLongitudeParts(splitCompact(longitude));
    ui->Text12->setText(plainText(convertRXLatORLonToDecimal(latitude, true)));
    ui->Text9->setText(plainText(convertRXLatORLonToDecimal(longitude, false)));
}

// Send to LogBook: the decimal degrees go to the entry form.
void Dialog::Command4_Click()
{
    Q_EMIT sendToLogBook(ui->Text12->text(), ui->Text9->text());
}

void Dialog::tell(const QString &problem)
{
    ui->Text12Problem->showProblem(problem, ui->Command4);
}

// The locator is kept in upper case while it is edited.
void Dialog::Text7_Change()
{
    QString upper = ui->Text7->text();
    for (QChar &c : upper) {
        c = c.toUpper(); // one by one, so that the cursor keeps its place
    }
    if (upper != ui->Text7->text()) {
        const int cursor = ui->Text7->cursorPosition();
        ui->Text7->setText(upper);
        ui->Text7->setCursorPosition(cursor);
    }
}

void Dialog::clearProblems()
{
    for (ProblemLabel *problem :
        {ui->Text12Problem, ui->Text9Problem, ui->Text1Problem, ui->Text4Problem, ui->Text7Problem}) {
        problem->clearProblem();
    }
}

PositionParts Dialog::latitudeParts() const
{
    return {ui->Text1->text(), ui->Text2->text(), ui->Text3->text(), ui->Combo1->currentText()};
}

PositionParts Dialog::longitudeParts() const
{
    return {ui->Text4->text(), ui->Text5->text(), ui->Text6->text(), ui->Combo2->currentText()};
}

void Dialog::showLatitudeParts(const PositionParts &parts)
{
    ui->Text1->setText(parts.degrees);
    ui->Text2->setText(parts.minutes);
    ui->Text3->setText(parts.hundredths);
    ui->Combo1->setCurrentText(parts.hemisphere);
}

void Dialog::showLongitudeParts(const PositionParts &parts)
{
    ui->Text4->setText(parts.degrees);
    ui->Text5->setText(parts.minutes);
    ui->Text6->setText(parts.hundredths);
    ui->Combo2->setCurrentText(parts.hemisphere);
}

} // namespace quillon
