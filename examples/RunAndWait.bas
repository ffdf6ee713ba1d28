Attribute VB_Name = "RunAndWait"
Option Explicit

' Starts a program and waits for its end. All declarations come from the bundled library, unchanged.

Private Const CREATE_NO_WINDOW As Long = &H8000000
Private Const INFINITE As Long = &HFFFFFFFF
Private Const STARTF_USESHOWWINDOW As Long = &H1
Private Const SW_HIDE As Long = 0
Private Const SW_SHOWNORMAL As Long = 1
Private Const WAIT_TIMEOUT As Long = 258
Private Declare Function CloseHandle Lib "kernel32" (ByVal hObject As Long) As Long
Private Declare Function CreateProcess Lib "kernel32" Alias "CreateProcessA" (ByVal lpApplicationName As String, ByVal lpCommandLine As String, lpProcessAttributes As Any, lpThreadAttributes As Any, ByVal bInheritHandles As Long, ByVal dwCreationFlags As Long, lpEnvironment As Any, ByVal lpCurrentDirectory As String, lpStartupInfo As STARTUPINFO, lpProcessInformation As PROCESS_INFORMATION) As Long
Private Declare Function GetExitCodeProcess Lib "kernel32" (ByVal hProcess As Long, lpExitCode As Long) As Long
Private Declare Function WaitForSingleObject Lib "kernel32" (ByVal hHandle As Long, ByVal dwMilliseconds As Long) As Long

Private Type PROCESS_INFORMATION
	hProcess As Long
	hThread As Long
	dwProcessId As Long
	dwThreadId As Long
End Type

Private Type STARTUPINFO
	cb As Long
	lpReserved As Long
	lpDesktop As Long
	lpTitle As Long
	dwX As Long
	dwY As Long
	dwXSize As Long
	dwYSize As Long
	dwXCountChars As Long
	dwYCountChars As Long
	dwFillAttribute As Long
	dwFlags As Long
	wShowWindow As Integer
	cbReserved2 As Integer
	lpReserved2 As Long
	hStdInput As Long
	hStdOutput As Long
	hStdError As Long
End Type

' The program's exit code. An error is raised when it cannot be started. The form that calls stays
' alive while it waits.
Public Function RunAndWait(ByVal CommandLine As String, Optional ByVal Hidden As Boolean) As Long
    Const SLICE = 50    ' milliseconds
    Dim Startup As STARTUPINFO
    Dim Process As PROCESS_INFORMATION
    Dim CreationFlags As Long

    Startup.cb = Len(Startup)
    Startup.dwFlags = STARTF_USESHOWWINDOW
    Startup.wShowWindow = IIf(Hidden, SW_HIDE, SW_SHOWNORMAL)
    If Hidden Then CreationFlags = CREATE_NO_WINDOW
    If CreateProcess(vbNullString, CommandLine, ByVal 0&, ByVal 0&, 0, CreationFlags, ByVal 0&, _
                     vbNullString, Startup, Process) = 0 Then
        Err.Raise vbObjectError + 1, "RunAndWait", "Cannot start " & CommandLine & _
                  ", system error " & Err.LastDllError
    End If
    CloseHandle Process.hThread
    Do While WaitForSingleObject(Process.hProcess, SLICE) = WAIT_TIMEOUT
        DoEvents
    Loop
    GetExitCodeProcess Process.hProcess, RunAndWait
    CloseHandle Process.hProcess
End Function
