; Zirvel.exe and zirvel-engine.exe hold the mutex ZirvelEngineRunning while
; they run, and Windows does not let files in use be replaced or removed.
; So the installer and the uninstaller ask the user to end Zirvel first
; (retry or cancel). Silent (/S), they stop with exit code 2 and touch no
; file. An instance running as administrator refuses a standard user even
; a look at its mutex (access denied): that, too, means it runs.
!include "LogicLib.nsh"

!define ZIRVEL_SYNCHRONIZE 0x00100000
!define ZIRVEL_ERROR_ACCESS_DENIED 5
!define ZIRVEL_EXIT_RUNNING 2

!macro ZIRVEL_RUNNING_CHECK prefix action
Function ${prefix}ZirvelMustNotRun
  ${Do}
    System::Call 'kernel32::OpenMutexW(i ${ZIRVEL_SYNCHRONIZE}, i 0, w "ZirvelEngineRunning") p.r0 ?e'
    Pop $1
    ${If} $0 P<> 0
      System::Call 'kernel32::CloseHandle(p r0)'
    ${ElseIf} $1 <> ${ZIRVEL_ERROR_ACCESS_DENIED}
      Return
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
      "Zirvel jest uruchomiony, a używanych plików programu nie da się ${action}.$\r$\n$\r$\nZamknij Zirvel (w obszarze powiadomień prawy przycisk na ikonie Zirvel, potem „Zakończ”) i spróbuj ponownie." \
      /SD IDCANCEL IDRETRY retry
    SetErrorLevel ${ZIRVEL_EXIT_RUNNING}
    Quit
    retry:
  ${Loop}
FunctionEnd
!macroend
