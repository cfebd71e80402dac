' The project object as scripts use it: project.vbs FOLDER PROJECT
Option Explicit
Dim project, other, row
Sub Check(what, good)
    If good Then WScript.Echo "ok " & what Else WScript.Echo "not ok " & what
End Sub
Set project = CreateObject("TalvixWorkbench.Project")
On Error Resume Next
project.Save
Check "nothing is open: " & Err.Description, Err.Number <> 0 And InStr(Err.Description, "kein Projekt") > 0
Err.Clear
project.New
project.Number = "4711"
project.Name = "Skript"
project.Folder = WScript.Arguments(0)
project.Setting("DOCUMENTS/RULES") = "<Project Number>"
Check "a setting comes back", project.Setting("DOCUMENTS/RULES") = "<Project Number>"
Check "a project without a file is not saved", project.Path = ""
project.Save
Check "and says so", Err.Number <> 0 And InStr(Err.Description, "keine Datei") > 0
Err.Clear
Check "reads its folder in", project.Import() = 1
Check "has rows", project.Rows.Count = 1 And project.Rows(1)("ID") = 1
Check "knows that it has changed", project.Changed
project.SaveAs WScript.Arguments(1)
Check "is saved", Err.Number = 0 And Not project.Changed And project.Path = WScript.Arguments(1)
project.Main.AddDMSItem 2, "Verweis", "", Now, "", Now, "", "", "http://example.org", "", "-1", Nothing, -1, True, ""
Check "reaches the component", project.Rows.Count = 2 And project.Changed
project.Save
Set other = CreateObject("TalvixWorkbench.Project")
other.Open WScript.Arguments(1)
Check "a second writer is refused: " & Err.Description, Err.Number <> 0 And InStr(Err.Description, "wird gerade bearbeitet") > 0
Err.Clear
other.Open WScript.Arguments(1), True
Check "a reader is not", Err.Number = 0 And other.ReadOnly And other.Rows.Count = 2
other.Save
Check "but does not write", Err.Number <> 0
Err.Clear
project.Close
other.Open WScript.Arguments(1)
Check "the next writer may", Err.Number = 0 And Not other.ReadOnly
other.Export WScript.Arguments(1) & ".csv"
Check "exports", Err.Number = 0 And CreateObject("Scripting.FileSystemObject").FileExists(WScript.Arguments(1) & ".csv")
other.Open WScript.Arguments(1)
Check "the same project opens again", Err.Number = 0 And Not other.ReadOnly And other.Rows.Count = 2
other.Open "C:\gibt\es\nicht.talvix"
Check "a failing open leaves the open project", Err.Number <> 0 And other.Rows.Count = 2
Err.Clear
other.Frob
Check "an unknown member is an error", Err.Number <> 0
WScript.Echo "done"
