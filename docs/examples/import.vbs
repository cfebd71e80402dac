' cscript import.vbs PRODUCTS FOLDER: registers the products, reads FOLDER into a document list and shows what came in.
Set shell = CreateObject("WScript.Shell")
Set files = CreateObject("Scripting.FileSystemObject")
products = WScript.Arguments(0)
summary = files.BuildPath(files.GetSpecialFolder(2), "TalvixImport.txt")
shell.Run "regsvr32 /s """ & products & "\TalvixDMS.dll""", 0, True
shell.Run "regsvr32 /s """ & products & "\TalvixGrid.ocx""", 0, True
shell.Run """" & products & "\TalvixWorkbench.exe"" ""/folder:" & WScript.Arguments(1) & """ ""/summary:" & summary & """ /exit", 1, True
WScript.Echo files.OpenTextFile(summary, 1, False, -1).ReadAll
