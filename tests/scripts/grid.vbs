' The grid as a plain data model, without a window.
Option Explicit
Dim failures
failures = 0
Sub Expect(what, actual, wanted)
    If actual <> wanted Then
        WScript.Echo "FAILED " & what & ": " & actual & " instead of " & wanted
        failures = failures + 1
    End If
End Sub

Dim grid, row, column, name, names, text
Set grid = CreateObject("TalvixGrid.Grid")
grid.Columns.Add("Name").Caption = "Der Name"
grid.Columns.Add "Number"
grid.Columns("Number").DataType = 3
For Each name In Array("Birne", "apfel", "Apfel")
    Set row = grid.Rows.Add()
    row("Name") = name
    row("Number") = Len(name)
Next
Expect "rows", grid.Rows.Count, 3
Expect "default member", grid.Rows(1)("Name"), "Birne"
Expect "find without case", grid.Find("Name", "APFEL"), 2
Expect "find from a row", grid.Find("Name", "APFEL", 3), 3
grid.Sort "Name"
Expect "sorted", grid.Rows(1)("Name"), "apfel"
Expect "sort order", grid.Columns("Name").SortOrder, 0
grid.Groups.Add "Name", 1
Expect "group heading", grid.Rows(1).Text("Name"), "Der Name: Birne (1)"
Expect "rows with headings", grid.Rows.Count, 5
names = ""
For Each column In grid.Columns
    names = names & column.Key & ","
Next
Expect "enumeration of columns", names, "Name,Number,"
names = 0
For Each row In grid.Rows
    If row.IsGroup Then names = names + 1
Next
Expect "enumeration of rows", names, 2
grid.Groups.Clear
grid.Selection.Add 2, 3
Expect "selection", grid.Selection(1).First & "-" & grid.Selection(1).Last, "2-3"
grid.CurrentRow = 1
Expect "current row", grid.CurrentRow("Name"), "apfel"
Expect "selection follows", grid.Selection(1).First & "-" & grid.Selection(1).Last, "1-1"
Set grid.CurrentRow = Nothing
Expect "no current row", (grid.CurrentRow Is Nothing), True
text = grid.SaveRowsAsText(";")
grid.Rows.Clear
grid.LoadRowsFromText text, ";"
Expect "loaded", grid.Rows(3)("Number"), 5
Expect "hit test", grid.HitTest(5, 5).Area, 2
Expect "window", grid.hWnd, 0
On Error Resume Next
grid.Columns.Add "NAME"
Expect "description", Err.Description, "There is a column with the key ""NAME"" already"
Err.Clear
row = grid.Rows(9)
Expect "range", Err.Description, "There is no row 9; rows are numbered from 1 to 3"
On Error Goto 0
If failures = 0 Then WScript.Echo "DONE"
WScript.Quit failures
