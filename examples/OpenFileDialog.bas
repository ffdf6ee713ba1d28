Attribute VB_Name = "OpenFileDialog"
Option Explicit

' Asks for a file to open. All declarations come from the bundled library, unchanged:
'   declarium-cli basket Win32.api declare:GetOpenFileName const:OFN_EXPLORER
'     const:OFN_FILEMUSTEXIST const:OFN_HIDEREADONLY const:OFN_PATHMUSTEXIST --closure

Private Const OFN_EXPLORER As Long = &H80000
Private Const OFN_FILEMUSTEXIST As Long = &H1000
Private Const OFN_HIDEREADONLY As Long = &H4
Private Const OFN_PATHMUSTEXIST As Long = &H800
Private Declare Function GetOpenFileName Lib "comdlg32" Alias "GetOpenFileNameA" (lpOpenfilename As OPENFILENAME) As Long

Private Type OPENFILENAME
	lStructSize As Long
	hwndOwner As Long
	hInstance As Long
	lpstrFilter As String
	lpstrCustomFilter As String
	nMaxCustFilter As Long
	nFilterIndex As Long
	lpstrFile As String
	nMaxFile As Long
	lpstrFileTitle As String
	nMaxFileTitle As Long
	lpstrInitialDir As String
	lpstrTitle As String
	Flags As Long
	nFileOffset As Integer
	nFileExtension As Integer
	lpstrDefExt As String
	lCustData As Long
	lpfnHook As Long
	lpTemplateName As String
	pvReserved As Long
	dwReserved As Long
	FlagsEx As Long
End Type

' The chosen file's path, empty when the dialog was cancelled. Filter is "Text|*.txt|All files|*.*".
Public Function AskFileToOpen(ByVal Owner As Long, ByVal Title As String, _
                              ByVal Filter As String) As String
    Const LONGEST_PATH = 1024
    Dim Dialog As OPENFILENAME

    Dialog.lStructSize = Len(Dialog)
    Dialog.hwndOwner = Owner
    Dialog.lpstrTitle = Title
    Dialog.lpstrFilter = Replace(Filter, "|", vbNullChar) & vbNullChar & vbNullChar
    Dialog.nFilterIndex = 1
    Dialog.lpstrFile = String$(LONGEST_PATH, vbNullChar)
    Dialog.nMaxFile = LONGEST_PATH
    Dialog.Flags = OFN_EXPLORER Or OFN_FILEMUSTEXIST Or OFN_HIDEREADONLY Or OFN_PATHMUSTEXIST
    If GetOpenFileName(Dialog) <> 0 Then AskFileToOpen = UpToNull(Dialog.lpstrFile)
End Function

Private Function UpToNull(ByVal Text As String) As String
    UpToNull = Left$(Text, InStr(Text & vbNullChar, vbNullChar) - 1)
End Function
