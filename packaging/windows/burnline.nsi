# The installer for Windows; tools/windows/package calls makensis with
#   VERSION  1.0.0
#   FOLDER   what gets installed
#   REMOVAL  a file of commands that remove just that again
#   KILOBYTES  how much that is
#   ICON     theirs
#   SETUP    the installer to be made
#
# On the command line: /S asks nothing; /CurrentUser or /AllUsers; /D=folder, as the last. The exit code is 0 when it is
# done, 1 when the user cancelled, 2 when something stood in its way.
#
# The user's files (settings, logs, configuration, flash files) lie in %LOCALAPPDATA%\Burnline, which the program makes
# at its start. Nothing here touches them.

Target amd64-unicode  # the program needs 64 bits too
SetCompressor /SOLID lzma
Name "Burnline Assistant"
OutFile "${SETUP}"
BrandingText "Burnline Assistant ${VERSION}"
ManifestDPIAware true
XPStyle on
AllowSkipFiles off
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${VERSION}.0"
VIAddVersionKey FileDescription "Burnline Assistant Setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey ProductName "Burnline Assistant"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey LegalCopyright "Copyright (c) 2026 the Burnline Assistant developers. MIT License."

!define REGISTERED "Software\Microsoft\Windows\CurrentVersion\Uninstall\Burnline"
!define SHORTCUT "Burnline Assistant.lnk"

# Who may be an administrator is asked to become one; everybody else can install for themselves.
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR "Burnline"
!define MULTIUSER_USE_PROGRAMFILES64
# Where it was installed before it is installed again; else for one user, who can then take the program's own updates.
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${REGISTERED}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${REGISTERED}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_FUNCTION KeepDesktopShortcut
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include Sections.nsh

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_COMPONENTSPAGE_NODESC
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
# By the desktop, so that the program doesn't inherit an administrator's rights.
!define MUI_FINISHPAGE_RUN "$WINDIR\explorer.exe"
!define MUI_FINISHPAGE_RUN_PARAMETERS "$\"$INSTDIR\burnline.exe$\""
!define MUI_FINISHPAGE_RUN_TEXT "Start Burnline Assistant"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

!macro RefuseWith words
  MessageBox MB_OK|MB_ICONSTOP "${words}" /SD IDOK
  SetErrorLevel 2
  Quit
!macroend

!define RUNNING "$0 is running.$\r$\n$\r$\nLet it bring its flash to the end, close it, and press Retry. So far nothing \
has been changed."

# A program that runs can't be written to, whoever runs it.
!macro DefineWaitForEnd prefix
  Function ${prefix}WaitForEnd
    ${Do}
      StrCpy $0 ""
      !insertmacro LookWhetherRunning burnline.exe
      !insertmacro LookWhetherRunning burnline-flash.exe
      ${If} $0 == ""
        Return
      ${EndIf}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${RUNNING}" /SD IDCANCEL IDRETRY again
      SetErrorLevel 2
      Quit
      again:
    ${Loop}
  FunctionEnd
!macroend
!macro LookWhetherRunning program
  ${If} ${FileExists} "$INSTDIR\${program}"
    ClearErrors
    FileOpen $1 "$INSTDIR\${program}" a
    ${If} ${Errors}
      StrCpy $0 "$INSTDIR\${program}"
    ${Else}
      FileClose $1
    ${EndIf}
  ${EndIf}
!macroend
!insertmacro DefineWaitForEnd ""
!insertmacro DefineWaitForEnd "un."

Section "Burnline Assistant" programs
  SectionIn RO
  Call WaitForEnd
  # Before anything is removed.
  ClearErrors
  SetOutPath "$INSTDIR"
  FileOpen $0 "$INSTDIR\burnline.tmp" w
  ${If} ${Errors}
    !insertmacro RefuseWith "Burnline Assistant can't be written to $INSTDIR. Nothing has been changed."
  ${EndIf}
  FileClose $0
  Delete "$INSTDIR\burnline.tmp"
  Call RemoveFormer
  ClearErrors
  SetOutPath "$INSTDIR"
  File /r "${FOLDER}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\${SHORTCUT}" "$INSTDIR\burnline.exe"
  ${If} ${Errors}
    !insertmacro RefuseWith "Burnline Assistant could not be written to $INSTDIR as a whole. Please install it again."
  ${EndIf}
  WriteRegStr SHCTX "${REGISTERED}" DisplayName "Burnline Assistant"
  WriteRegStr SHCTX "${REGISTERED}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${REGISTERED}" DisplayIcon "$INSTDIR\burnline.exe"
  WriteRegStr SHCTX "${REGISTERED}" Publisher "The Burnline Assistant developers"
  WriteRegStr SHCTX "${REGISTERED}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${REGISTERED}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${REGISTERED}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${REGISTERED}" EstimatedSize ${KILOBYTES}
  WriteRegDWORD SHCTX "${REGISTERED}" NoModify 1
  WriteRegDWORD SHCTX "${REGISTERED}" NoRepair 1
SectionEnd

Section /o "Shortcut on the desktop" desktop
  CreateShortcut "$DESKTOP\${SHORTCUT}" "$INSTDIR\burnline.exe"
SectionEnd

# What an older version brought and this one doesn't would stay forever.
Function RemoveFormer
  ReadRegStr $2 SHCTX "${REGISTERED}" InstallLocation
  ${If} $2 == ""
  ${OrIfNot} ${FileExists} "$2\uninstall.exe"
    Return
  ${EndIf}
  # It stays where it is, so that its end can be waited for.
  ExecWait '"$2\uninstall.exe" /S _?=$2' $0
  ${If} $0 != 0
    !insertmacro RefuseWith "The version in $2 can't be removed. If it is running, close it, and install again."
  ${EndIf}
  Delete "$2\uninstall.exe"
  RMDir "$2"
FunctionEnd

# Each way to install has its own desktop. A shortcut that lies there is wanted again.
Function KeepDesktopShortcut
  ${If} ${FileExists} "$DESKTOP\${SHORTCUT}"
    !insertmacro SelectSection ${desktop}
  ${Else}
    !insertmacro UnselectSection ${desktop}
  ${EndIf}
FunctionEnd

Function .onInit
  Push $INSTDIR  # empty, if the command line has named none
  !insertmacro MULTIUSER_INIT
  Pop $0
  ${If} $0 != ""
    StrCpy $INSTDIR $0
  ${EndIf}
FunctionEnd

Function un.onInit
  !insertmacro MULTIUSER_UNINIT
  ReadRegStr $0 HKCU "${REGISTERED}" InstallLocation
  ${If} $0 == $INSTDIR
    Call un.MultiUser.InstallMode.CurrentUser
  ${Else}
    Call un.MultiUser.InstallMode.AllUsers
    ${If} $MultiUser.InstallMode != AllUsers
      !insertmacro RefuseWith "Burnline Assistant was installed for all users; only an administrator can remove it."
    ${EndIf}
  ${EndIf}
FunctionEnd

Section un.Burnline
  Call un.WaitForEnd
  !include "${REMOVAL}"
  Delete "$INSTDIR\burnline.exe.bnl-*"  # what the program's own updates may leave
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\${SHORTCUT}"
  Delete "$DESKTOP\${SHORTCUT}"
  DeleteRegKey SHCTX "${REGISTERED}"
  # Goes only if there is nothing in it.
  SetShellVarContext current
  RMDir "$LOCALAPPDATA\Burnline"
SectionEnd
