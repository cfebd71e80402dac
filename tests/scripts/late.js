// The same servers from the other script language.
var failures = 0;
function expect(what, actual, wanted) {
    if (actual !== wanted) {
        WScript.Echo("FAILED " + what + ": " + actual + " instead of " + wanted);
        ++failures;
    }
}
var grid = new ActiveXObject("TalvixGrid.Grid");
grid.Columns.Add("Name");
var row = grid.Rows.Add();
row.Value("Name") = "eins";
expect("value", row.Value("Name"), "eins");
expect("default member", grid.Rows(1)("Name"), "eins");
row.Selected = true;
expect("selection", grid.Selection(1).First, 1);
var keys = "";
for (var e = new Enumerator(grid.Columns); !e.atEnd(); e.moveNext()) {
    keys += e.item().Key;
}
expect("enumerator", keys, "Name");
var message = "";
try {
    grid.Columns("Fehlt");
} catch (error) {
    message = error.description;
}
expect("error", message, "There is no column with the key \"Fehlt\"");
var main = new ActiveXObject("TalvixDMS.Main.1");
main.ReferenceLibraries({ AddMessageDescription: function () { return null; } }, {}, null, 5, "x", undefined);
main.InitSGDMS();
main.Init();
main.strAddingFile = "Datei";
expect("public member", main.strAddingFile, "Datei");
expect("MkDirs answers", typeof main.MkDirs("x"), "boolean");
main.DereferenceLibraries();
if (failures === 0) {
    WScript.Echo("DONE");
}
WScript.Quit(failures);
