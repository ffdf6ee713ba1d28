Attribute VB_Name = "RegistryValue"
Option Explicit

' Reads a value of the registry. All declarations come from the bundled library, unchanged.

Private Const ERROR_SUCCESS As Long = 0
Private Const HKEY_CURRENT_USER As Long = &H80000001
Private Const HKEY_LOCAL_MACHINE As Long = &H80000002
Private Const KEY_ENUMERATE_SUB_KEYS As Long = &H8
Private Const KEY_NOTIFY As Long = &H10
Private Const KEY_QUERY_VALUE As Long = &H1
Private Const READ_CONTROL As Long = &H20000
Private Const STANDARD_RIGHTS_READ As Long = READ_CONTROL
Private Const SYNCHRONIZE As Long = &H100000
Private Const KEY_READ As Long = (STANDARD_RIGHTS_READ Or KEY_QUERY_VALUE Or KEY_ENUMERATE_SUB_KEYS Or KEY_NOTIFY) And Not SYNCHRONIZE
Private Const REG_DWORD As Long = 4
Private Const REG_EXPAND_SZ As Long = 2
Private Const REG_SZ As Long = 1
Private Declare Function ExpandEnvironmentStrings Lib "kernel32" Alias "ExpandEnvironmentStringsA" (ByVal lpSrc As String, ByVal lpDst As String, ByVal nSize As Long) As Long
Private Declare Function RegCloseKey Lib "advapi32" (ByVal hKey As Long) As Long
Private Declare Function RegOpenKeyEx Lib "advapi32" Alias "RegOpenKeyExA" (ByVal hKey As Long, ByVal lpSubKey As String, ByVal ulOptions As Long, ByVal samDesired As Long, phkResult As Long) As Long
Private Declare Function RegQueryValueEx Lib "advapi32" Alias "RegQueryValueExA" (ByVal hKey As Long, ByVal lpValueName As String, ByVal lpReserved As Long, lpType As Any, lpData As Any, lpcbData As Any) As Long

Public Enum RegistryRoot
    CurrentUser = HKEY_CURRENT_USER
    LocalMachine = HKEY_LOCAL_MACHINE
End Enum

' The text or number of a value, Default when there is none or one of another type.
Public Function RegistryValue(ByVal Root As RegistryRoot, ByVal Path As String, _
                              ByVal ValueName As String, Optional ByVal Default As Variant) As Variant
    Dim Key As Long

    RegistryValue = Default
    If RegOpenKeyEx(Root, Path, 0, KEY_READ, Key) <> ERROR_SUCCESS Then Exit Function
    ReadValue Key, ValueName, RegistryValue
    RegCloseKey Key
End Function

Private Sub ReadValue(ByVal Key As Long, ByVal ValueName As String, Result As Variant)
    Dim ValueType As Long
    Dim Size As Long
    Dim Number As Long
    Dim Text As String

    If RegQueryValueEx(Key, ValueName, 0, ValueType, ByVal 0&, Size) <> ERROR_SUCCESS Then Exit Sub
    Select Case ValueType
        Case REG_DWORD
            Size = LenB(Number)
            If RegQueryValueEx(Key, ValueName, 0, ValueType, Number, Size) = ERROR_SUCCESS Then
                Result = Number
            End If
        Case REG_SZ, REG_EXPAND_SZ
            Text = String$(Size, vbNullChar)
            If RegQueryValueEx(Key, ValueName, 0, ValueType, ByVal Text, Size) = ERROR_SUCCESS Then
                Result = UpToNull(Text)
                If ValueType = REG_EXPAND_SZ Then Result = Expanded(Result)
            End If
    End Select
End Sub

' With the variables of the environment, as %WINDIR%, replaced.
Private Function Expanded(ByVal Text As String) As String
    Dim Size As Long

    Size = ExpandEnvironmentStrings(Text, vbNullString, 0)
    Expanded = String$(Size, vbNullChar)
    ExpandEnvironmentStrings Text, Expanded, Size
    Expanded = UpToNull(Expanded)
End Function

Private Function UpToNull(ByVal Text As String) As String
    UpToNull = Left$(Text, InStr(Text & vbNullChar, vbNullChar) - 1)
End Function
