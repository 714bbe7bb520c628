// A configuration file of any bytes: changing a key keeps every other item, and doing it again changes
// nothing.

#include "require.h"

#include "core/config.h"
#include "platform/files.h"

#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = CodePage().decode(QByteArrayView(data, static_cast<qsizetype>(size)));
    Settings settings;
    setDefaults(settings);
    readSettings(text, settings);

    const QStringList items = configItems(text);
    require(items.size() <= text.size() + 1);
    for (const QString &item : items) {
        require(!item.startsWith(u' ') || text.contains(u'"'));
        require(!item.contains(u'\n'));
    }
    // An item that holds no comma and no quote any more is read as it was written.
    const QString written = items.join("\r\n"_L1) + "\r\n"_L1;
    if (!text.contains(u'"') && !text.isEmpty()) {
        require(configItems(written) == items);
    }

    const QString value = text.left(20).remove(u'\n').remove(u'\r');
    const QStringList changed = changedItems(items, u"OMID="_s, value, false);
    require(changedItems(changed, u"OMID="_s, value, false) == changed);
    require(changed.size() == items.size() || changed.size() == items.size() + 1);
    const QString line = u"OMID="_s + QString(value).replace(u',', u'|');
    require(changed.contains(line));
    for (qsizetype i = 0; i < items.size(); ++i) {
        require(changed[i] == (items[i].contains("OMID="_L1) ? line : items[i]));
    }

    Settings after;
    setDefaults(after);
    readSettings(line, after);
    require(after.omid == QString(value).replace(u'|', u','));
    return 0;
}
