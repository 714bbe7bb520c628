#include "growthrun.h"
#include "live/ui/receiverdock.h"
#include "support/told.h"

#include <QCheckBox>
#include <QComboBox>

// The commands that change receptions, and what the receiver hears.

namespace quillon::bench {

namespace {

// A new reception stands in the form, of a site of the list.
void typeAtSite(Window &window)
{
    window.typeReception();
    window.write(u"Text5"_s, u"Transmitter Site 11"_s);
    window.find<QComboBox>(u"Combo3"_s).setEditText(u"Spain"_s);
}

void measureAdds(GrowthRun &run)
{
    Window &window = run.window();
    const auto add = [&window] { window.click(u"Command1"_s); };
    run.measure(u"New, and Cancel"_s, [&window] {
        window.click(u"Command2"_s);
        window.click(u"Command2"_s);
    });
    run.measureStep(
        u"add"_s, [&window] { typeAtSite(window); }, add);
    window.trigger(u"menuViewDistances"_s);
    run.measureStep(
        u"add, its distance measured"_s, [&window] { typeAtSite(window); }, add);
    window.trigger(u"menuViewDistances"_s);
    run.measureStep(
        u"Quick Add"_s, [&run] { run.closeDialogs(); },
        [&] {
            window.click(u"Command14"_s);
            const QDialog &quickAdd = run.dialog(u"Dialog1"_s);
            controlOf<QLineEdit>(quickAdd, u"Text1"_s).setText(u"99.9"_s);
            controlOf<QLineEdit>(quickAdd, u"Text2"_s).setText(u"ABCD"_s);
            press(quickAdd, u"OKButton"_s);
        });
}

} // namespace

void measureEntries(GrowthRun &run)
{
    Window &window = run.window();
    measureAdds(run);
    const int apart = run.entries() / 30;
    int row = 1;
    run.measureStep(
        u"update"_s, [&] { window.typeOver(row += apart); }, [&window] { window.click(u"Command3"_s); });
    run.measureStep(
        u"delete"_s, [&] { window.chooseRow(row += apart); }, [&window] { window.click(u"Command15"_s); });
    run.measure(u"a row is chosen"_s, [&] { window.chooseRow(row += apart); });
    run.measure(
        u"Clone"_s, [&] { window.chooseRow(row -= apart); }, [&window] { window.click(u"Command9"_s); });
    window.chooseRow(1);
}

void measureMany(GrowthRun &run)
{
    Window &window = run.window();
    const auto chooseAll = [&] {
        run.closeDialogs();
        window.grid().clearSelection();
        window.grid().selectAll();
    };
    const auto openEdit = [&window] { window.trigger(u"menuEditMany"_s); };
    run.measure(
        u"all chosen"_s, [&window] { window.grid().clearSelection(); },
        [&window] { window.grid().selectAll(); });
    run.measure(u"all chosen and Edit"_s, chooseAll, openEdit);
    run.measureStep(
        u"edit of all"_s,
        [&] {
            chooseAll();
            openEdit();
            const QDialog &edit = run.dialog(u"editMany"_s);
            controlOf<QCheckBox>(edit, u"tickProp"_s).setChecked(true);
            controlOf<QComboBox>(edit, u"valueProp"_s).setEditText(u"Tropo"_s);
        },
        [&run] { press(run.dialog(u"editMany"_s), u"OKButton"_s); });
    run.measureStep(u"delete of all"_s, chooseAll, [&window] { window.click(u"Command15"_s); });
    run.measure(u"copy of all"_s, chooseAll, [&window] { window.trigger(u"menuEditCopy"_s); });
    window.grid().clearSelection();
}

void measureReceiver(GrowthRun &run)
{
    Window &window = run.window();
    auto &dock = window.find<ReceiverDock>(u"receiverDock"_s);
    run.measure(
        u"the receiver is shown"_s, [&dock] { dock.hide(); },
        [&window] { window.trigger(u"menuViewReceiver"_s); });
    test::Told &source = test::listenTold(dock.receiver());
    run.measure(
        u"the receiver learns the log"_s, [&] { dock.receiver().setKnown(KnownStations(run.log())); });
    const auto hear = [&source] { source.hear(98'500'000, 0xD3C2, u"MDR JUMP"_s); };
    run.measure(u"the receiver hears a station"_s, hear);
    run.measureStep(u"what the receiver hears is logged"_s, hear, [&dock] { dock.logHeard(); });
    dock.receiver().disconnectFrom();
    dock.hide();
}

} // namespace quillon::bench
