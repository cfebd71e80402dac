// Whatever is changed is shown: the display is told of it, and is not told of what only looks.
#include "automation/late.h"
#include "automation/text.h"
#include "grid/model/gestures.h"
#include "grid/model/grid_objects.h"
#include "tests/fakes/expando.h"
#include "tests/fakes/fake_culture.h"
#include "tests/fakes/fake_view.h"

#include <gtest/gtest.h>

#include <functional>

namespace talvix::grid {

namespace {

/// Three rows in two groups.
struct ViewRig {
    ViewRig() {
        grid[u"Columns"](u"Add", u"Name");
        grid[u"Columns"](u"Add", u"Place");
        for (const auto* place : {u"a", u"b", u"a"}) {
            const Late row = grid[u"Rows"][u"Add"];
            row.SetAt(u"Value", u"Name", u"Plan");
            row.SetAt(u"Value", u"Place", place);
        }
        grid[u"Groups"](u"Add", u"Place");
        model->view = &view;
    }
    ~ViewRig() { model->view = nullptr; }
    ViewRig(const ViewRig&) = delete;
    ViewRig& operator=(const ViewRig&) = delete;

    FakeCulture culture;
    FakeView view;
    SharedGrid model = std::make_shared<GridModel>(culture);
    Late grid{Value(std::make_shared<GridObject>(model))};
    Gestures gestures{*model};
};

struct ViewStep {
    const char* name;
    std::function<void(ViewRig&)> take;
};

/// How often the display is told during a step on a new grid.
int Told(const ViewStep& step) {
    ViewRig rig;
    const int before = rig.view.refreshes;
    step.take(rig);
    return rig.view.refreshes - before;
}

const ViewStep kChanges[] = {
    {"Columns.Add", [](ViewRig& rig) { rig.grid[u"Columns"](u"Add", u"New"); }},
    {"Column.Position", [](ViewRig& rig) { rig.grid(u"Columns", u"Name").Set(u"Position", 1); }},
    {"Column.Caption", [](ViewRig& rig) { rig.grid(u"Columns", u"Name").Set(u"Caption", u"x"); }},
    {"Column.Width", [](ViewRig& rig) { rig.grid(u"Columns", u"Name").Set(u"Width", 9); }},
    {"Column.Hidden", [](ViewRig& rig) { rig.grid(u"Columns", u"Name").Set(u"Hidden", true); }},
    {"Column.DataType", [](ViewRig& rig) { rig.grid(u"Columns", u"Name").Set(u"DataType", 3); }},
    {"Column.Alignment", [](ViewRig& rig) { rig.grid(u"Columns", u"Name").Set(u"Alignment", 6); }},
    {"Column.HeaderAlignment",
     [](ViewRig& rig) { rig.grid(u"Columns", u"Name").Set(u"HeaderAlignment", 6); }},
    {"Column.BestFit", [](ViewRig& rig) { rig.grid(u"Columns", u"Name").Call(u"BestFit"); }},
    {"Rows.Add", [](ViewRig& rig) { rig.grid[u"Rows"].Call(u"Add"); }},
    {"Rows.Remove", [](ViewRig& rig) { rig.grid[u"Rows"].Call(u"Remove", 2); }},
    {"Rows.Clear", [](ViewRig& rig) { rig.grid[u"Rows"].Call(u"Clear"); }},
    {"Row.Value", [](ViewRig& rig) { rig.grid(u"Rows", 2).SetAt(u"Value", u"Name", u"x"); }},
    {"Row.Picture",
     [](ViewRig& rig) { rig.grid(u"Rows", 2).SetAt(u"Picture", u"Name", Nothing()); }},
    {"Row.Expanded", [](ViewRig& rig) { rig.grid(u"Rows", 1).Set(u"Expanded", false); }},
    {"Row.Selected", [](ViewRig& rig) { rig.grid(u"Rows", 2).Set(u"Selected", true); }},
    {"CurrentRow", [](ViewRig& rig) { rig.grid.Set(u"CurrentRow", 2); }},
    {"GroupByBox", [](ViewRig& rig) { rig.grid.Set(u"GroupByBox", true); }},
    {"GroupByBoxText", [](ViewRig& rig) { rig.grid.Set(u"GroupByBoxText", u"x"); }},
    {"GroupIndent", [](ViewRig& rig) { rig.grid.Set(u"GroupIndent", 3); }},
    {"ImageList", [](ViewRig& rig) { rig.grid.Set(u"ImageList", 0); }},
    {"MultiSelect", [](ViewRig& rig) { rig.grid.Set(u"MultiSelect", false); }},
    {"FullRowSelect", [](ViewRig& rig) { rig.grid.Set(u"FullRowSelect", false); }},
    {"HeaderVisible", [](ViewRig& rig) { rig.grid.Set(u"HeaderVisible", false); }},
    {"Sort", [](ViewRig& rig) { rig.grid.Call(u"Sort", u"Name"); }},
    {"RefreshRows", [](ViewRig& rig) { rig.grid.Call(u"RefreshRows", -1, -1); }},
    {"RefreshSort", [](ViewRig& rig) { rig.grid.Call(u"RefreshSort", -1, -1); }},
    {"Expand", [](ViewRig& rig) { rig.grid.Call(u"Expand", 2); }},
    {"ExpandAll", [](ViewRig& rig) { rig.grid.Call(u"ExpandAll"); }},
    {"CollapseAll", [](ViewRig& rig) { rig.grid.Call(u"CollapseAll"); }},
    {"LoadRowsFromText",
     [](ViewRig& rig) { rig.grid.Call(u"LoadRowsFromText", u"Name\r\nx\r\n", u";"); }},
    {"Filter", [](ViewRig& rig) { rig.grid.Set(u"Filter", u"x"); }},
    {"FilterColumn", [](ViewRig& rig) { rig.grid.Set(u"FilterColumn", u"Name"); }},
    {"LoadLayout",
     [](ViewRig& rig) { rig.grid.Call(u"LoadLayout", rig.grid.Call(u"SaveLayout")); }},
    {"Groups.Add", [](ViewRig& rig) { rig.grid[u"Groups"].Call(u"Add", u"Name"); }},
    {"Groups.Remove", [](ViewRig& rig) { rig.grid[u"Groups"].Call(u"Remove", 1); }},
    {"Groups.Clear", [](ViewRig& rig) { rig.grid[u"Groups"].Call(u"Clear"); }},
    {"Selection.Add", [](ViewRig& rig) { rig.grid[u"Selection"].Call(u"Add", 1, 2); }},
    {"Selection.Clear", [](ViewRig& rig) { rig.grid[u"Selection"].Call(u"Clear"); }},
    {"Redraw", [](ViewRig& rig) { rig.grid.Set(u"Redraw", true); }},
    {"click", [](ViewRig& rig) { rig.gestures.ClickRow(2, false, false); }},
    {"key", [](ViewRig& rig) { rig.gestures.Move(Step::Down, 2, false, false); }},
    {"select all", [](ViewRig& rig) { rig.gestures.SelectAll(); }},
    {"toggle heading", [](ViewRig& rig) { rig.gestures.ToggleHeading(1); }},
    {"type", [](ViewRig& rig) { rig.gestures.TypeText(u"P"); }},
};

const ViewStep kLooks[] = {
    {"Column.Caption", [](ViewRig& rig) { rig.grid(u"Columns", u"Name").Call(u"Caption"); }},
    {"Row.Value", [](ViewRig& rig) { rig.grid(u"Rows", 2).Call(u"Value", u"Name"); }},
    {"CurrentRow", [](ViewRig& rig) { rig.grid.Call(u"CurrentRow"); }},
    {"SaveLayout", [](ViewRig& rig) { rig.grid.Call(u"SaveLayout"); }},
    {"Find", [](ViewRig& rig) { rig.grid.Call(u"Find", u"Name", u"Plan"); }},
    {"HitTest", [](ViewRig& rig) { rig.grid.Call(u"HitTest", 5, 5); }},
    {"type", [](ViewRig& rig) { rig.gestures.TypeText(u"Q"); }},
    {"toggle nothing", [](ViewRig& rig) { rig.gestures.ToggleCurrent(); }},
    {"dark",
     [](ViewRig& rig) {
         rig.grid.Set(u"Redraw", false);
         rig.grid[u"Rows"].Call(u"Add");
     }},
};

} // namespace

TEST(View, IsToldOfEveryChange) {
    for (const ViewStep& step : kChanges) {
        EXPECT_GT(Told(step), 0) << step.name;
    }
    const ViewStep toggle = {"toggle current", [](ViewRig& rig) {
                                 rig.model->rows.SetCurrent(rig.model->rows.At(2));
                                 rig.gestures.ToggleCurrent();
                             }};
    EXPECT_EQ(Told(toggle), 1);
}

TEST(View, IsNotToldOfLooks) {
    for (const ViewStep& step : kLooks) {
        EXPECT_EQ(Told(step), 0) << step.name;
    }
}

} // namespace talvix::grid
