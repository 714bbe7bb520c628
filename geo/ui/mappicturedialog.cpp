#include "geo/ui/mappicturedialog.h"

#include "platform/files.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QPushButton>
#include <QSpinBox>
#include <QStandardPaths>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int smallestPicture = 100;

QSpinBox *sizeBox(QWidget *parent, const QString &name, int value)
{
    auto *box = new QSpinBox(parent);
    box->setObjectName(name);
    box->setRange(smallestPicture, largestPicture);
    box->setValue(value);
    box->setSuffix(u" pixels"_s);
    return box;
}

} // namespace

MapPictureDialog::MapPictureDialog(QSize offered, QWidget *parent)
    : QDialog(parent)
    , m_width(sizeBox(this, u"pictureWidth"_s, offered.width()))
    , m_height(sizeBox(this, u"pictureHeight"_s, offered.height()))
{
    setObjectName(u"mapPicture"_s);
    setWindowTitle(u"Save Picture"_s);
    auto *form = new QFormLayout(this);
    form->addRow(u"&Width"_s, m_width);
    form->addRow(u"&Height"_s, m_height);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Save)->setText(u"&Save…"_s);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QSize MapPictureDialog::size() const
{
    return {m_width->value(), m_height->value()};
}

QString saveMapPicture(QWidget *parent, const MapPicture &picture, QSize offered, FileCalls &calls)
{
    MapPictureDialog dialog(offered, parent);
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    const QString png = u"PNG picture (*.png)"_s;
    const QString svg = u"SVG drawing (*.svg)"_s;
    QFileDialog where(
        parent, u"Save Picture"_s, QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
    where.setAcceptMode(QFileDialog::AcceptSave);
    where.setNameFilters({png, svg});
    // Before it is asked whether a file is to be written over.
    const auto follow = [&](const QString &kind) {
        where.setDefaultSuffix(kind == svg ? u"svg"_s : u"png"_s);
    };
    QObject::connect(&where, &QFileDialog::filterSelected, &where, follow);
    follow(png);
    where.selectFile(u"map"_s);
    if (where.exec() != QDialog::Accepted) {
        return {};
    }
    QString path = where.selectedFiles().value(0);
    writeFile(path, pictureBytes(picture, dialog.size(), path), calls);
    return path;
}

} // namespace quillon
