; The installer. For one user, in a folder of that user's, because the program keeps the melodies
; beside itself. makensis -DVERSION -DTREE -DICON -DEXAMPLES -DOUTPUT
Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma
!include MUI2.nsh
!include x64.nsh

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Cantavista"
!define CLASSES "Software\Classes"

Name "Cantavista"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Cantavista"
InstallDirRegKey HKCU "Software\Cantavista" "Folder"
BrandingText "Cantavista ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Cantavista"
VIAddVersionKey "FileDescription" "Installazione di Cantavista"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "The Cantavista authors, MIT License"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\cantavista.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${TREE}\licenze\Cantavista.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Italian"

!macro TellTheShell
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

Section
  ${IfNot} ${RunningX64}
    MessageBox MB_OK|MB_ICONSTOP "Cantavista richiede un Windows a 64 bit !!!" /SD IDOK
    Abort
  ${EndIf}
  SetOutPath "$INSTDIR"
  File /r /x Melodie "${TREE}\*"
  ; Where the program is already installed, a melody that the user has changed or thrown away
  ; stays so.
  ReadRegStr $0 HKCU "Software\Cantavista" "Folder"
  ${If} $0 != "$INSTDIR"
    SetOverwrite off
    File /r "${TREE}\Melodie"
    SetOverwrite on
  ${EndIf}
  WriteUninstaller "$INSTDIR\disinstalla.exe"
  CreateShortcut "$SMPROGRAMS\Cantavista.lnk" "$INSTDIR\cantavista.exe"

  WriteRegStr HKCU "Software\Cantavista" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${CLASSES}\.mel" "" "Cantavista.Melodia"
  WriteRegStr HKCU "${CLASSES}\Cantavista.Melodia" "" "Melodia di Cantavista"
  WriteRegStr HKCU "${CLASSES}\Cantavista.Melodia\DefaultIcon" "" "$INSTDIR\cantavista.exe,1"
  WriteRegStr HKCU "${CLASSES}\Cantavista.Melodia\shell\open\command" "" \
    '"$INSTDIR\cantavista.exe" "%1"'

  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Cantavista"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\cantavista.exe"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\disinstalla.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\disinstalla.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  !insertmacro TellTheShell
SectionEnd

; Removes what the installer brought; the melodies that the user saved stay.
Section "Uninstall"
  Delete "$INSTDIR\cantavista.exe"
  Delete "$INSTDIR\cantavista.chm"
  Delete "$INSTDIR\*.dll"
  Delete "$INSTDIR\qt.conf"
  Delete "$INSTDIR\LEGGIMI.txt"
  Delete "$INSTDIR\disinstalla.exe"
  RMDir /r "$INSTDIR\plugins"
  RMDir /r "$INSTDIR\modules"
  RMDir /r "$INSTDIR\translations"
  RMDir /r "$INSTDIR\note"
  RMDir /r "$INSTDIR\aiuto"
  RMDir /r "$INSTDIR\licenze"
  !include "${EXAMPLES}"
  RMDir "$INSTDIR\Melodie\Esempi"
  RMDir "$INSTDIR\Melodie"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Cantavista.lnk"

  ReadRegStr $0 HKCU "${CLASSES}\.mel" ""
  ${If} $0 == "Cantavista.Melodia"
    DeleteRegKey HKCU "${CLASSES}\.mel"
  ${EndIf}
  DeleteRegKey HKCU "${CLASSES}\Cantavista.Melodia"
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey HKCU "Software\Cantavista"
  !insertmacro TellTheShell
SectionEnd
