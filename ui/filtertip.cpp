#include "ui/filtertip.h"

#include "core/filterterm.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString asks(FilterTest test)
{
    return test == FilterTest::Begins  ? u"begins with it"_s
        : test == FilterTest::IsNumber ? u"is that number"_s
                                       : u"contains it"_s;
}

} // namespace

QString filterTip()
{
    QString tip = u"<qt>Words, all of which occur somewhere in the row, whatever their case and accents."
                  u"<br><b>-word</b> must not occur, <b>\"two words\"</b> stand together.<table>"_s;
    for (const FilterKey &key : filterKeys()) {
        tip += "<tr><td><b>"_L1 + key.key + (key.hasOrder ? u":&nbsp;&lt;&nbsp;&gt;" : u":")
            + "</b>&nbsp;&nbsp;</td><td>"_L1 + logField(key.field).caption + u' ' + asks(key.withColon)
            + (key.field == LogField::Dist ? u", in km" : u"") + "</td></tr>"_L1;
    }
    return tip
        + "</table>For instance <b>km&gt;1500 -itu:E date:2025-06</b>. A key with nothing after its colon: "
          "the field is empty. With <b>==</b> in place of the colon the field is just that: <b>itu==E</b>.<br>Esc clears the filter.</qt>"_L1;
}

} // namespace quillon
