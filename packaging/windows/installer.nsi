; Installs for the current user, without administrator rights: the editor writes to its own folder.
;
;   makensis -DSOURCE=folder -DOUTPUT=setup.exe installer.nsi
;
; SOURCE is the output of "cmake --install" and windeployqt, see ../README.md.

Unicode true
!include MUI2.nsh

!define NAME "Kelvaron Profile Editor"
!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\KelvaronProfileEditor"
!define MUI_ICON "../icons/kelvaron-profile-editor.ico"

Name "${NAME}"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\${NAME}"

!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Section
    ; The program is always replaced.
    SetOutPath "$INSTDIR"
    File /r /x KelvaronProfileEditorFiles /x demo "${SOURCE}\*.*"

    ; Existing files in the user's folder are kept. A newer bundle has another name and is preferred.
    SetOverwrite off
    SetOutPath "$INSTDIR\KelvaronProfileEditorFiles"
    File /nonfatal "${SOURCE}\KelvaronProfileEditorFiles\*.*"

    ; The demo has its own folder, and so its own executable next to it. It finds Qt's libraries in the
    ; working folder of the shortcut and the plugins through qt.conf.
    SetOutPath "$INSTDIR\Demo\KelvaronProfileEditorFiles"
    File "${SOURCE}\demo\*.*"
    SetOverwrite on
    SetOutPath "$INSTDIR\Demo"
    File "${SOURCE}\KelvaronProfileEditor.exe"
    FileOpen $0 "$INSTDIR\Demo\qt.conf" w
    FileWrite $0 "[Paths]$\r$\nPrefix=..$\r$\nPlugins=.$\r$\n"
    FileClose $0

    SetOutPath "$INSTDIR" ; the working folder of the shortcuts
    CreateDirectory "$SMPROGRAMS\${NAME}"
    CreateShortcut "$SMPROGRAMS\${NAME}\${NAME}.lnk" "$INSTDIR\KelvaronProfileEditor.exe"
    CreateShortcut "$SMPROGRAMS\${NAME}\${NAME} (simulated charger).lnk" \
        "$INSTDIR\Demo\KelvaronProfileEditor.exe"
    CreateShortcut "$SMPROGRAMS\${NAME}\Bundles and Profiles.lnk" \
        "$INSTDIR\KelvaronProfileEditorFiles"

    WriteUninstaller "$INSTDIR\uninstall.exe"
    WriteRegStr HKCU "${KEY}" "DisplayName" "${NAME}"
    WriteRegStr HKCU "${KEY}" "DisplayVersion" "0.99"
    WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\KelvaronProfileEditor.exe"
    WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
SectionEnd

; Removes the installed files; the folders of bundles and profiles are kept.
Section Uninstall
    Delete "$INSTDIR\*.exe"
    Delete "$INSTDIR\*.dll"
    Delete "$INSTDIR\Demo\KelvaronProfileEditor.exe"
    Delete "$INSTDIR\Demo\qt.conf"
    RMDir /r "$INSTDIR\bearer"
    RMDir /r "$INSTDIR\doc"
    RMDir /r "$INSTDIR\iconengines"
    RMDir /r "$INSTDIR\imageformats"
    RMDir /r "$INSTDIR\platforms"
    RMDir /r "$INSTDIR\styles"
    RMDir /r "$INSTDIR\translations"
    RMDir "$INSTDIR"
    RMDir /r "$SMPROGRAMS\${NAME}"
    DeleteRegKey HKCU "${KEY}"
SectionEnd
