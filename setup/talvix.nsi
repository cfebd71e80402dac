; One setup program for 32 and 64 bit, for all users or for one. Silent: /S, with /AllUsers or /CurrentUser.
; Built by tools/make-setup, which defines BIN32, BIN64 (folders with the products), GUIDE and OUT.
Unicode true
!define NAME "TalvixDMS"
!define VERSION "1.0.0"
!define COMPANY "Talvix"
!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"
!define PROJECT "Talvix.Project"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR "${NAME}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${ENTRY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallMode"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${ENTRY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!include MultiUser.nsh
!include MUI2.nsh
!include x64.nsh
!include FileFunc.nsh

Name "${NAME}"
OutFile "${OUT}"
SetCompressor /SOLID lzma
ManifestDPIAware true
VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1031 "ProductName" "${NAME}"
VIAddVersionKey /LANG=1031 "CompanyName" "${COMPANY}"
VIAddVersionKey /LANG=1031 "FileDescription" "Einrichtung von ${NAME}"
VIAddVersionKey /LANG=1031 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1031 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1031 "LegalCopyright" "${COMPANY}"

!define MUI_ICON "..\workbench\program\workbench.ico"
!define MUI_UNICON "..\workbench\program\workbench.ico"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "German"

; The files of one bitness.
!macro Products FROM
    File "${FROM}\TalvixDMS.dll"
    File "${FROM}\TalvixGrid.ocx"
    File "${FROM}\TalvixProject.dll"
    File "${FROM}\TalvixWorkbench.exe"
    File "${FROM}\TalvixWorkbench.com"
    File "${GUIDE}"
!macroend

!macro RemoveProducts FOLDER
    Delete "${FOLDER}\TalvixDMS.dll"
    Delete "${FOLDER}\TalvixGrid.ocx"
    Delete "${FOLDER}\TalvixProject.dll"
    Delete "${FOLDER}\TalvixWorkbench.exe"
    Delete "${FOLDER}\TalvixWorkbench.com"
    Delete "${FOLDER}\TalvixWorkbench.html"
    RMDir "${FOLDER}"
!macroend

; Registers (WAY is "") or unregisters ("/u") one server of one bitness. A 32-bit program reaches the
; 64-bit tool below Sysnative.
!macro Server WAY SYSTEM FILE
    ${If} $MultiUser.InstallMode == "AllUsers"
        ExecWait '"${SYSTEM}\regsvr32.exe" ${WAY} /s "$INSTDIR\${FILE}"' $0
    ${Else}
        ExecWait '"${SYSTEM}\regsvr32.exe" ${WAY} /n /i:user /s "$INSTDIR\${FILE}"' $0
    ${EndIf}
    ${If} $0 <> 0
        StrCpy $4 $0
    ${EndIf}
!macroend

; $4 is 0 afterwards, or what one of the servers has answered.
!macro Servers WAY
    StrCpy $4 0
    !insertmacro Server "${WAY}" "$SYSDIR" "32\TalvixGrid.ocx"
    !insertmacro Server "${WAY}" "$SYSDIR" "32\TalvixDMS.dll"
    !insertmacro Server "${WAY}" "$SYSDIR" "32\TalvixProject.dll"
    ${If} ${RunningX64}
        !insertmacro Server "${WAY}" "$WINDIR\Sysnative" "64\TalvixGrid.ocx"
        !insertmacro Server "${WAY}" "$WINDIR\Sysnative" "64\TalvixDMS.dll"
        !insertmacro Server "${WAY}" "$WINDIR\Sysnative" "64\TalvixProject.dll"
    ${EndIf}
!macroend

!macro Registered
    ${If} $4 <> 0
        SetErrorLevel 2
        Abort "TalvixDMS kann nicht registriert werden (Fehler $4)."
    ${EndIf}
!macroend

Function .onInit
    !insertmacro MULTIUSER_INIT
FunctionEnd

Function un.onInit
    !insertmacro MULTIUSER_UNINIT
FunctionEnd

; An earlier version goes first, so that nothing of it stays behind.
Function RemoveEarlier
    ReadRegStr $1 SHCTX "${ENTRY}" "UninstallString"
    ReadRegStr $2 SHCTX "${ENTRY}" "InstallLocation"
    ${If} $1 != ""
    ${AndIf} $2 != ""
        ExecWait '$1 /S /upgrade /$MultiUser.InstallMode _?=$2' $0
        Delete "$2\Uninstall.exe"
        RMDir "$2"
    ${EndIf}
FunctionEnd

Section "TalvixDMS"
    Call RemoveEarlier
    SetOutPath "$INSTDIR\32"
    !insertmacro Products "${BIN32}"
    StrCpy $3 "$INSTDIR\32\TalvixWorkbench.exe"
    ${If} ${RunningX64}
        SetOutPath "$INSTDIR\64"
        !insertmacro Products "${BIN64}"
        StrCpy $3 "$INSTDIR\64\TalvixWorkbench.exe"
    ${EndIf}
    SetOutPath "$INSTDIR"
    !insertmacro Servers ""
    !insertmacro Registered
    WriteUninstaller "$INSTDIR\Uninstall.exe"
    CreateShortCut "$SMPROGRAMS\Talvix Workbench.lnk" "$3"
    WriteRegStr SHCTX "Software\Classes\.talvix" "" "${PROJECT}"
    WriteRegStr SHCTX "Software\Classes\${PROJECT}" "" "Talvix-Projekt"
    WriteRegStr SHCTX "Software\Classes\${PROJECT}\DefaultIcon" "" "$3,0"
    WriteRegStr SHCTX "Software\Classes\${PROJECT}\shell\open\command" "" '"$3" "%1"'
    WriteRegStr SHCTX "${ENTRY}" "DisplayName" "${NAME}"
    WriteRegStr SHCTX "${ENTRY}" "DisplayVersion" "${VERSION}"
    WriteRegStr SHCTX "${ENTRY}" "Publisher" "${COMPANY}"
    WriteRegStr SHCTX "${ENTRY}" "DisplayIcon" "$3,0"
    WriteRegStr SHCTX "${ENTRY}" "InstallLocation" "$INSTDIR"
    WriteRegStr SHCTX "${ENTRY}" "InstallMode" "$MultiUser.InstallMode"
    WriteRegStr SHCTX "${ENTRY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr SHCTX "${ENTRY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S /$MultiUser.InstallMode'
    WriteRegDWORD SHCTX "${ENTRY}" "NoModify" 1
    WriteRegDWORD SHCTX "${ENTRY}" "NoRepair" 1
    WriteRegDWORD SHCTX "${ENTRY}" "EstimatedSize" 4600
SectionEnd

; What was installed goes, and nothing else: projects, and whatever else somebody put into the folder, stay.
Section "Uninstall"
    !insertmacro Servers "/u"
    Delete "$SMPROGRAMS\Talvix Workbench.lnk"
    DeleteRegKey SHCTX "Software\Classes\${PROJECT}"
    ReadRegStr $1 SHCTX "Software\Classes\.talvix" ""
    ${If} $1 == "${PROJECT}"
        DeleteRegKey SHCTX "Software\Classes\.talvix"
    ${EndIf}
    ; A later version takes the user's settings over.
    ${GetParameters} $5
    ClearErrors
    ${GetOptions} $5 "/upgrade" $6
    ${If} ${Errors}
        DeleteRegKey HKCU "Software\Talvix\Workbench"
        DeleteRegKey /ifempty HKCU "Software\Talvix"
    ${EndIf}
    DeleteRegKey SHCTX "${ENTRY}"
    !insertmacro RemoveProducts "$INSTDIR\32"
    !insertmacro RemoveProducts "$INSTDIR\64"
    Delete "$INSTDIR\Uninstall.exe"
    RMDir "$INSTDIR"
SectionEnd
