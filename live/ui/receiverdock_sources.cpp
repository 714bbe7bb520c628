#include "live/ui/receiverdock.h"
#include "ui/guard.h"
#include "ui/messages.h"

#include "ui_receiverdock.h"

#include <QMenu>

// The source that is chosen, and those that are kept by a name.

namespace quillon {

using namespace Qt::StringLiterals;

SourceSettings ReceiverDock::chosen() const
{
    SourceSettings source = m_settings.last;
    source.kind = static_cast<SourceKind>(m_ui->receiverSource->currentIndex());
    source.address = m_ui->receiverAddress->text().trimmed();
    source.password = takesPassword(source.kind) ? m_ui->receiverPassword->text() : QString();
    return source;
}

// Source: another kind has another usual address.
void ReceiverDock::receiverSource_Change()
{
    const auto kind = static_cast<SourceKind>(m_ui->receiverSource->currentIndex());
    m_ui->receiverAddress->clear();
    m_ui->receiverAddress->setPlaceholderText(usualAddress(kind));
    m_atOnce->setEnabled(kind == SourceKind::RdsSpy);
    m_ui->receiverPassword->setVisible(takesPassword(kind));
    m_ui->labelPassword->setVisible(takesPassword(kind));
}

void ReceiverDock::showSource()
{
    m_ui->receiverSource->setCurrentIndex(static_cast<int>(m_settings.last.kind));
    receiverSource_Change();
    m_ui->receiverAddress->setText(m_settings.last.address);
    m_ui->receiverPassword->setText(m_settings.last.password);
    m_atOnce->setChecked(m_settings.last.atOnce);
}

void ReceiverDock::fillKept()
{
    for (QMenu *const menu : {m_kept, m_forget}) {
        menu->clear();
        menu->setEnabled(!m_settings.kept.isEmpty());
    }
    for (const KeptSource &kept : m_settings.kept) {
        const QString caption = QString(kept.name).replace(u'&', u"&&"_s);
        m_kept->addAction(caption, this, [this, kept] {
            m_receiver.disconnectFrom();
            m_settings.last = kept.settings;
            showSource();
            guarded(this, [this] { receiverConnect_Click(); });
        });
        // The entry that was chosen cannot be taken out of its menu before it is done.
        m_forget->addAction(caption, this, [this, name = kept.name] {
            QTimer::singleShot(0, this, [this, name] { guarded(this, [&] { forgetSource(name); }); });
        });
    }
}

void ReceiverDock::forgetSource(const QString &name)
{
    if (askYesNo(this, u"Forget the source \"%1\", with its address and its password?"_s.arg(name),
            u"Forget a Source"_s)) {
        m_settings.kept.removeIf([&](const KeptSource &kept) { return kept.name == name; });
        fillKept();
        save();
    }
}

void ReceiverDock::keepSource()
{
    const SourceSettings source = chosen();
    if (const QString wrong = makeSource(source).wrong; !wrong.isEmpty()) {
        showMessage(this, wrong);
        return;
    }
    const QString name =
        inputBox(this, u"Name of this source:"_s, u"Keep This Source"_s, kindName(source.kind)).trimmed();
    if (name.isEmpty()) {
        return;
    }
    m_settings.kept.removeIf([&](const KeptSource &kept) { return kept.name == name; });
    m_settings.kept.append({name, source});
    fillKept();
    save();
}

} // namespace quillon
