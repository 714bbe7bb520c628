#include "import/ui/rdsdxlist.h"

#include "import/ui/foldertext.h"
#include "platform/files.h"
#include "platform/folder.h"
#include "platform/runtimeerror.h"
#include "ui/guard.h"
#include "ui/plaintip.h"

#include "ui_rdsdxlist.h"

#include <QCoreApplication>
#include <QHeaderView>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

rdsdxlist::rdsdxlist(const CodePage &codePage, Import importRDSDXLogCnv, QWidget *parent)
    : QDialog(parent)
    , m_codePage(codePage)
    , m_import(std::move(importRDSDXLogCnv))
    , ui(std::make_unique<Ui::rdsdxlist>())
{
    ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    ui->List1->setHeadings({{u"File"_s, u"20100612.txt"_s}});
    ui->List1->horizontalHeader()->setSectionsClickable(false);
    connect(ui->List1->selectionModel(), &QItemSelectionModel::currentChanged, this,
        [this] { guarded(this, [this] { List1_Click(); }); });
    connect(ui->List1, &ResultList::lineActivated, ui->OKButton, &QPushButton::click);
    connect(
        ui->OKButton, &QPushButton::clicked, this, [this] { guarded(this, [this] { OKButton_Click(); }); });
    connect(ui->CancelButton, &QPushButton::clicked, this,
        [this] { guarded(this, [this] { CancelButton_Click(); }); });
}

rdsdxlist::~rdsdxlist() = default;

void rdsdxlist::start(const QString &folder)
{
    show();
    raise();
    activateWindow();
    ui->List1->setFocus();
    populateDirBox(folder.isEmpty() ? u"*.txt"_s : filePath(folder, u"*.txt"_s));
}

void rdsdxlist::populateDirBox(const QString &pattern)
{
    const qsizetype slash = pattern.lastIndexOf(u'/');
    const QString folder = slash == 0 ? u"/"_s : pattern.first(std::max(slash, qsizetype(0)));
    const QString ending = pattern.sliced(slash + 1).remove(u'*');
    const QString missing = missingFolderText(folder, u"RDSDX"_s);
    ui->folder->setText(missing.isEmpty() ? QString(u"Folder: "_s + folder) : missing);
    ui->folder->setToolTip(plainTip(folder));
    ui->List1->setEmptyText(missing.isEmpty()
            ? u"No %1 files in %2. Another folder is set in the menu Setup, under Directories."_s.arg(
                ending, folder)
            : missing);
    ui->List1->clear();
    List1_Click();
    ui->List1->setLines(fileNames(folder, ending, m_codePage));
    ui->List1->setListIndex(ui->List1->count() - 1);
}

// The daily logs: one has become the highlighted one.
void rdsdxlist::List1_Click()
{
    ui->OKButton->setEnabled(ui->List1->listIndex() >= 0);
}

// OK: imports the highlighted log.
void rdsdxlist::OKButton_Click()
{
    const QString selectedFile = ui->List1->text(ui->List1->listIndex());
    hide();
    QCoreApplication::processEvents();
    try {
        m_import(selectedFile);
    } catch (const RuntimeError &) {
        show();
        throw;
    }
    close();
}

// Cancel: closes the window.
void rdsdxlist::CancelButton_Click()
{
    close();
}

} // namespace quillon
