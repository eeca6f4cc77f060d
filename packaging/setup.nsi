; Makes the setup program. Given by ./release: VERSION, as 2019.1.0; FILES, the folder with what is installed; OUTPUT; KILOBYTES.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
; The files of the archive, and what is installed, bear the time of the installation: two builds give the same bytes.
SetDateSave off

Name "Quillbarrow"
OutFile "${OUTPUT}"
; For one user, without the rights of an administrator.
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Quillbarrow"
InstallDirRegKey HKCU "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillbarrow" "InstallLocation"
ShowInstDetails nevershow
ShowUninstDetails nevershow
ManifestDPIAware true
Caption "Quillbarrow Setup"
UninstallCaption "Remove Quillbarrow"
BrandingText "Quillbarrow ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Quillbarrow"
VIAddVersionKey "FileDescription" "Quillbarrow setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "CompanyName" "Quillbarrow"
VIAddVersionKey "LegalCopyright" ""

!include "FileFunc.nsh"
!include "LogicLib.nsh"
!include "MUI2.nsh"
!include "nsDialogs.nsh"

!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillbarrow"
!define RUN "Software\Microsoft\Windows\CurrentVersion\Run"
!define STORE "Software\VB and VBA Program Settings"
!define TITLE "Quillbarrow 2019 - Protecting your Privacy since 1997!"
!define CLASS "QuillbarrowWindow"

!define PICTURES "${SOURCE}\packaging"
!define MUI_ICON "${SOURCE}\src\app\windows\quillbarrow.ico"
!define MUI_UNICON "${MUI_ICON}"
!define MUI_HEADERIMAGE
!define MUI_HEADERIMAGE_RIGHT
!define MUI_HEADERIMAGE_BITMAP "${PICTURES}\header.bmp"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURES}\side.bmp"

!define MUI_DIRECTORYPAGE_TEXT_TOP "Quillbarrow is installed for you alone; that takes no administrator rights.$\r$\n\
  If it is running now, it is ended first: what it is deleting at that moment stops at the next file."
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE "Quillbarrow is installed"
!define MUI_FINISHPAGE_TEXT_LARGE
!define MUI_FINISHPAGE_TEXT "What you tick in it is deleted. There is no undo.$\r$\n$\r$\nClosing its window only hides it: \
  $\"ShutDown Quillbarrow$\" in the menu of its icon beside the clock ends it. It starts with Windows, hidden."
!define MUI_FINISHPAGE_RUN "$INSTDIR\Quillbarrow.exe"
!define MUI_FINISHPAGE_RUN_TEXT "&Start Quillbarrow"
!insertmacro MUI_PAGE_FINISH
UninstPage custom un.AskForData un.TakeAnswer
!define MUI_INSTFILESPAGE_FINISHHEADER_TEXT "Quillbarrow is removed"
!define MUI_INSTFILESPAGE_FINISHHEADER_SUBTEXT "Other users of this computer keep theirs."
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var WasRunning
Var RemoveData ; 1 if settings and data go too
Var RemoveButton

; Ends the program as its user does: the first close request hides its window, the next one ends it, and it stores its
; count. If it is not gone after a few of them, the request that Windows makes at the end of a session follows, which no
; open window of the program puts off. A run in progress ends at its next file. Sets the error flag if all that was in vain.
!macro EndProgram UN
Function ${UN}EndProgram
  StrCpy $WasRunning 0
  StrCpy $9 0
  ${Do}
    ClearErrors
    FindWindow $0 "${CLASS}" "${TITLE}"
    ${If} $0 == 0
      ${ExitDo}
    ${EndIf}
    StrCpy $WasRunning 1
    DetailPrint "Ending the copy of Quillbarrow that is running"
    IntOp $9 $9 + 1
    ${If} $9 > 5
      SetErrors
      ${ExitDo}
    ${EndIf}
    System::Call 'user32::GetWindowThreadProcessId(p r0, *i .r1)'
    System::Call 'kernel32::OpenProcess(i 0x100000, i 0, i r1) p .r2' ; SYNCHRONIZE
    ${If} $9 < 5
      SendMessage $0 0x10 0 0 /TIMEOUT=5000 ; WM_CLOSE
    ${Else}
      SendMessage $0 0x11 0 1 /TIMEOUT=5000 ; WM_QUERYENDSESSION, ENDSESSION_CLOSEAPP
      SendMessage $0 0x16 1 1 /TIMEOUT=20000 ; WM_ENDSESSION
    ${EndIf}
    ${If} $2 != 0
      ; Not at once: the file of a program that still winds up cannot be replaced.
      ${If} $9 == 1
        System::Call 'kernel32::WaitForSingleObject(p r2, i 500)'
      ${Else}
        System::Call 'kernel32::WaitForSingleObject(p r2, i 5000)'
      ${EndIf}
      System::Call 'kernel32::CloseHandle(p r2)'
    ${EndIf}
  ${Loop}
FunctionEnd
!macroend
!insertmacro EndProgram ""
!insertmacro EndProgram "un."

; The exit code of both programs where the running one could not be ended.
!macro StopIfItRuns UN
  Call ${UN}EndProgram
  ${If} ${Errors}
    SetErrorLevel 3
    MessageBox MB_OK|MB_ICONSTOP "Quillbarrow is running and cannot be ended. Please end it from its icon and start again." /SD IDOK
    Abort
  ${EndIf}
!macroend

Section
  !insertmacro StopIfItRuns ""
  SetOutPath "$INSTDIR"
  ClearErrors
  File "${FILES}\Quillbarrow.exe"
  File "${FILES}\logo.gif"
  File "${FILES}\Read me.txt"
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  ${If} ${Errors}
    SetErrorLevel 4
    MessageBox MB_OK|MB_ICONSTOP "Quillbarrow could not be written to $INSTDIR." /SD IDOK
    Abort
  ${EndIf}
  CreateShortCut "$SMPROGRAMS\Quillbarrow.lnk" "$INSTDIR\Quillbarrow.exe"
  WriteRegStr HKCU "${ENTRY}" "DisplayName" "Quillbarrow"
  WriteRegStr HKCU "${ENTRY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${ENTRY}" "DisplayIcon" "$INSTDIR\Quillbarrow.exe"
  WriteRegStr HKCU "${ENTRY}" "Publisher" "Quillbarrow"
  WriteRegStr HKCU "${ENTRY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${ENTRY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${ENTRY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${ENTRY}" "EstimatedSize" ${KILOBYTES}
  WriteRegDWORD HKCU "${ENTRY}" "NoModify" 1
  WriteRegDWORD HKCU "${ENTRY}" "NoRepair" 1
  ; The program writes this value where there is none; one that is there may name an older copy in another folder.
  ReadRegStr $0 HKCU "${RUN}" "Quillbarrow"
  ${If} $0 != ""
    WriteRegStr HKCU "${RUN}" "Quillbarrow" '"$INSTDIR\Quillbarrow.exe" /STARTUP'
  ${EndIf}
  ; After an update the user has what he had before; with windows the last of them asks.
  ${If} $WasRunning == 1
  ${AndIf} ${Silent}
    Exec '"$INSTDIR\Quillbarrow.exe"'
  ${EndIf}
SectionEnd

; Sets $R1 to 1 if the folder $R0 is there and is no junction or link: what such a one leads to is not the program's.
Function un.IsPlainFolder
  StrCpy $R1 0
  System::Call 'kernel32::GetFileAttributesW(w R0) i .r0'
  ${If} $0 != -1
    IntOp $1 $0 & 0x410 ; a folder, and where it leads elsewhere
    ${If} $1 = 0x10
      StrCpy $R1 1
    ${EndIf}
  ${EndIf}
FunctionEnd

; By name and by folder, never a whole tree.
Function un.RemoveData
  StrCpy $R0 "$LOCALAPPDATA\Quillbarrow\thumbs"
  Call un.IsPlainFolder
  ${If} $R1 = 1
    Delete "$LOCALAPPDATA\Quillbarrow\thumbs\*.jpg"
  ${EndIf}
  RMDir "$LOCALAPPDATA\Quillbarrow\thumbs"
  StrCpy $R0 "$LOCALAPPDATA\Quillbarrow"
  Call un.IsPlainFolder
  ${If} $R1 = 1
    Delete "$R0\qb.dat"
    Delete "$R0\qb.dat.new"
    Delete "$R0\logo.gif"
    Delete "$R0\Fernledger*.html"
    Delete "$R0\Quillbarrow_ErrLogFile.txt"
  ${EndIf}
  RMDir "$LOCALAPPDATA\Quillbarrow"
  DeleteRegKey HKCU "${STORE}\Temp\SystemData"
  DeleteRegKey /ifempty HKCU "${STORE}\Temp"
  DeleteRegKey /ifempty HKCU "${STORE}"
FunctionEnd

; /DATA takes settings and data along, and picks that answer on the page that asks.
Function un.onInit
  StrCpy $RemoveData 0
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} "$0" "/DATA" $1
  ${IfNot} ${Errors}
    StrCpy $RemoveData 1
  ${EndIf}
FunctionEnd

Function un.AskForData
  !insertmacro MUI_HEADER_TEXT "Remove Quillbarrow" "The program and its entries go."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateLabel} 0 0 100% 24u "Quillbarrow will be removed from $INSTDIR. If it is running, it is ended first."
  Pop $0
  ${NSD_CreateLabel} 0 30u 100% 10u "Your settings and data:"
  Pop $0
  ${NSD_CreateFirstRadioButton} 0 42u 100% 12u "&Keep them. Another installation will use them again."
  Pop $1
  ${NSD_CreateAdditionalRadioButton} 0 56u 100% 12u "&Remove them, for good."
  Pop $RemoveButton
  ${NSD_CreateLabel} 12u 69u -12u 28u "These are all settings, the list of cookies to keep, the pages of past audits and the error log."
  Pop $0
  ${NSD_CreateLabel} 0 104u 100% 26u "Either way, pictures that an audit copied to C:\thumbs stay there. Delete that folder yourself."
  Pop $0
  ${If} $RemoveData = 1
    ${NSD_Check} $RemoveButton
    ${NSD_SetFocus} $RemoveButton
  ${Else}
    ${NSD_Check} $1
    ${NSD_SetFocus} $1
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function un.TakeAnswer
  ${NSD_GetState} $RemoveButton $RemoveData
FunctionEnd

Section "Uninstall"
  !insertmacro StopIfItRuns "un."
  ; Another copy may have written the value for itself.
  ReadRegStr $0 HKCU "${RUN}" "Quillbarrow"
  ${If} $0 == '"$INSTDIR\Quillbarrow.exe" /STARTUP'
    DeleteRegValue HKCU "${RUN}" "Quillbarrow"
  ${EndIf}
  Delete "$INSTDIR\Quillbarrow.exe"
  ${If} ${FileExists} "$INSTDIR\Quillbarrow.exe"
    SetErrorLevel 4
    MessageBox MB_OK|MB_ICONSTOP "Quillbarrow.exe could not be removed from $INSTDIR." /SD IDOK
    Abort
  ${EndIf}
  Delete "$INSTDIR\logo.gif"
  Delete "$INSTDIR\Read me.txt"
  Delete "$INSTDIR\Uninstall.exe"
  ; Only if nothing else lies in it, as a helper that the user put there.
  RMDir "$INSTDIR"
  RMDir "$LOCALAPPDATA\Programs"
  Delete "$SMPROGRAMS\Quillbarrow.lnk"
  DeleteRegKey HKCU "${ENTRY}"
  ${If} $RemoveData = 1
    Call un.RemoveData
  ${EndIf}
SectionEnd
