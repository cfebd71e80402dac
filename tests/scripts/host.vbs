' A host written in script: its classes answer only through IDispatchEx in some script engines.
Option Explicit

Class UserProperty
    Public Value
End Class

Class UserProperties
    Public Folder
    Public Default Function Item(name)
        If name <> "Speicherort Dokumente" Then Err.Raise 5
        Set Item = Folder
    End Function
End Class

Class FormPage
    Public Grid
    Public Function Controls(name)
        If name <> "DMSGrid" Then Err.Raise 5
        Set Controls = Grid
    End Function
End Class

Class Inspector
    Public Page
    Public Function ModifiedFormPages(name)
        If name <> "Dokumente" Then Err.Raise 5
        Set ModifiedFormPages = Page
    End Function
End Class

Class OutlookApplication
    Public Version
End Class

Class ProjectItem
    Public GetInspector
    Public UserProperties
    Public Application
End Class

Class Managing
    Public Item
    Public Writes
    Public LastId
    Public Function GetNextID(list)
        If list <> "DMS" Then Err.Raise 5
        LastId = LastId + 1
        GetNextID = LastId
    End Function
    Public Sub WriteGridDataToItemBody()
        Writes = Writes + 1
    End Sub
End Class

Class Common
    Public strCurrentUser
    Public Number
    Public Title
    Public Sub AddMessageDescription(n, key, a, text, style, caption, b, c)
        Number = n
        Title = caption
    End Sub
End Class

Class Other
    Public Dummy
End Class

Dim failures
failures = 0
Sub Expect(what, actual, wanted)
    If actual <> wanted Then
        WScript.Echo "FAILED " & what & ": " & actual & " instead of " & wanted
        failures = failures + 1
    End If
End Sub

Dim folder, fso, grid, item, m, c, o, main
folder = WScript.Arguments(0)
Set fso = CreateObject("Scripting.FileSystemObject")

Set item = New ProjectItem
Set item.UserProperties = New UserProperties
Set item.UserProperties.Folder = New UserProperty
item.UserProperties.Folder.Value = " " & folder & "  "
Set item.Application = New OutlookApplication
item.Application.Version = "11.0.0.5510"
Set item.GetInspector = New Inspector
Set item.GetInspector.Page = New FormPage
Set grid = CreateObject("TalvixGrid.Grid")
Set item.GetInspector.Page.Grid = grid
Set m = New Managing
Set m.Item = item
m.Writes = 0
m.LastId = 0
Set c = New Common
c.strCurrentUser = "Erika Muster"
Set o = New Other

Set main = CreateObject("TalvixDMS.Main")
main.ReferenceLibraries c, m, o, o, o, o
Expect "message number", c.Number, 3500
Expect "message title", c.Title, "Fehlende Informationen"
main.InitSGDMS
Expect "columns", grid.Columns.Count, 15
Expect "heading", grid.Columns("Subject").Caption, "Name/Betreff"
main.Init
main.AddFilesFromProjectFolderEvent
Expect "rows", grid.Rows.Count, 3
Expect "writes", m.Writes, 1
Expect "size", grid.Rows(1)("ItemSize"), "2 KB"
Expect "creator", grid.Rows(1)("Creator"), "Erika Muster"
Expect "number", grid.Rows(3)("ID"), 3
Expect "sub-folder", grid.Rows(3)("PhysicalStore2"), "\Unterordner"
main.AddFilesFromProjectFolderEvent
Expect "rows after the second import", grid.Rows.Count, 3
Expect "writes after the second import", m.Writes, 1
main.AddFile folder & "\fehlt.doc", "fehlt", "offen", ""
Expect "row of a missing file", grid.Rows(4)("ItemSize"), "1 KB"
main.StopImport = True
Expect "StopImport", main.StopImport, True
main.DereferenceLibraries
main.DereferenceLibraries
If failures = 0 Then WScript.Echo "DONE"
WScript.Quit failures
