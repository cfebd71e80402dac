' cscript import.vbs FOLDER: what somebody would write without the component: walks through a folder, keeps the paths that are
' listed in a Dictionary and fills the grid. The exit code is the number of rows.
Option Explicit
Dim grid, files, listed, nextId, key
Set files = CreateObject("Scripting.FileSystemObject")
Set listed = CreateObject("Scripting.Dictionary")
Set grid = CreateObject("TalvixGrid.Grid")
listed.CompareMode = 1
For Each key In Array("ID", "ObjectType", "Subject", "ItemSize", "ObjectDescription", "CreationDate", "ModificationDate", _
        "Status", "PhysicalStore1", "PhysicalStore2")
    grid.Columns.Add key
Next
nextId = 1
grid.Redraw = False
AddFolder files.GetFolder(WScript.Arguments(0))
grid.Redraw = True
WScript.Quit grid.Rows.Count

Sub AddFolder(folder)
    Dim file, inner
    For Each file In folder.Files
        AddFile file
    Next
    For Each inner In folder.SubFolders
        AddFolder inner
    Next
End Sub

Sub AddFile(file)
    Dim row, path
    path = file.Path
    If listed.Exists(path) Then Exit Sub
    listed.Add path, nextId
    Set row = grid.Rows.Add()
    row("ID") = nextId
    row("ObjectType") = "Datei"
    row("Subject") = file.Name
    row("ItemSize") = file.Size
    row("ObjectDescription") = UCase(files.GetExtensionName(path)) & "-Datei"
    row("CreationDate") = file.DateCreated
    row("ModificationDate") = file.DateLastModified
    row("Status") = "offen"
    row("PhysicalStore1") = path
    row("PhysicalStore2") = files.GetParentFolderName(path)
    nextId = nextId + 1
End Sub
