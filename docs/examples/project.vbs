' project.vbs FOLDER PROJECT: makes a project of a folder, reads it in and exports its list.
Set project = CreateObject("TalvixWorkbench.Project")
project.New
project.Name = "Neubau"
project.Folder = WScript.Arguments(0)
project.Import
project.SaveAs WScript.Arguments(1)
project.Export WScript.Arguments(1) & ".csv"
WScript.Echo project.Rows.Count & " Dokumente"
