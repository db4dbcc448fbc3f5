; The installer: for one user, without asking for an administrator. script/package-windows defines VERSION, STAGE (the
; program's files as they are in the portable archive) and OUTPUT.
; As the program itself.
Target amd64-unicode
ManifestDPIAware true
RequestExecutionLevel user
SetCompressor /SOLID lzma
SetDateSave off

!include MUI2.nsh
!include WinMessages.nsh

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillet"

Name "Quillet"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Quillet"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
BrandingText "Quillet ${VERSION}"

; The class of the hidden window that every running program has.
!define WINDOW_CLASS "Quill.AppID.NoVersion"

!define MUI_ICON "${SOURCE}\packaging\windows\quillet.ico"
!define MUI_UNICON "${SOURCE}\packaging\windows\quillet.ico"
!define MUI_FINISHPAGE_RUN "$INSTDIR\bin\quillet.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "TradChinese"
!insertmacro MUI_LANGUAGE "English"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=${LANG_ENGLISH} ProductName "Quillet"
VIAddVersionKey /LANG=${LANG_ENGLISH} ProductVersion "${VERSION}"
VIAddVersionKey /LANG=${LANG_ENGLISH} FileDescription "Quillet"
VIAddVersionKey /LANG=${LANG_ENGLISH} FileVersion "${VERSION}"
VIAddVersionKey /LANG=${LANG_ENGLISH} LegalCopyright "2026 The Quillet developers"

LangString STILL_OPEN ${LANG_TRADCHINESE} "Quillet 還開著。請先關閉它的視窗，再按「重試」。"
LangString STILL_OPEN ${LANG_ENGLISH} "Quillet is still open. Close its window, then choose Retry."

!macro WAIT_FOR_END
  again:
    FindWindow $0 "${WINDOW_CLASS}"
    IntCmp $0 0 closed
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(STILL_OPEN)" /SD IDCANCEL IDRETRY again
    SetErrorLevel 3
    Quit
  closed:
!macroend

; Only what was installed, so that nothing of the user's goes that he has put beside it.
!macro REMOVE_FILES
  Delete "$INSTDIR\bin\quillet.exe"
  RMDir "$INSTDIR\bin"
  RMDir /r "$INSTDIR\share\quillet\Data"
  RMDir /r "$INSTDIR\share\quillet\demo"
  RMDir "$INSTDIR\share\quillet"
  RMDir "$INSTDIR\share"
  RMDir /r "$INSTDIR\doc"
!macroend

Function .onInit
  !insertmacro WAIT_FOR_END
FunctionEnd

Function un.onInit
  !insertmacro WAIT_FOR_END
FunctionEnd

Section
  !insertmacro REMOVE_FILES
  ; Apart from its data, as on other systems: what is the user's then goes to his own folder.
  SetOutPath "$INSTDIR\bin"
  File "${STAGE}\quillet.exe"
  SetOutPath "$INSTDIR\share\quillet\Data"
  File /r "${STAGE}\Data\*"
  SetOutPath "$INSTDIR\share\quillet\demo"
  File /r "${STAGE}\demo\*"
  SetOutPath "$INSTDIR\doc"
  File /r "${STAGE}\doc\*"

  ; Where a shortcut starts the program.
  SetOutPath "$INSTDIR\bin"
  CreateShortcut "$SMPROGRAMS\Quillet.lnk" "$INSTDIR\bin\quillet.exe"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Quillet"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\bin\quillet.exe"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "The Quillet developers"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

; Settings, lists and accounts stay: the folder Quillet of the user's local data, and SOFTWARE\Quillet.
Section "Uninstall"
  !insertmacro REMOVE_FILES
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Quillet.lnk"
  DeleteRegKey HKCU "${UNINSTALL}"
  ; What the program writes at its starts, so that links can be given to it (platform/link_handler.cpp).
  DeleteRegKey HKCU "SOFTWARE\Clients\StartMenuInternet\Quillet"
  DeleteRegKey HKCU "SOFTWARE\Classes\StartMenuInternet\Quillet"
  DeleteRegKey HKCU "SOFTWARE\Classes\QuilletHTML"
  DeleteRegValue HKCU "SOFTWARE\RegisteredApplications" "Quillet"
SectionEnd
