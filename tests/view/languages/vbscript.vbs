' 検索した行を数える。don't double-click it
Option Explicit
On Error Resume Next

Const ForReading = 1
Const LIMIT = &HFF
Dim fso, path, total

Class Hit
    Public Path
    Private Sub Class_Initialize
        Path = Empty
    End Sub
End Class

Function CountLines(path, word)
    Dim stream, line
    Set stream = fso.OpenTextFile(path, ForReading)
    CountLines = 0
    Do Until stream.AtEndOfStream
        line = stream.ReadLine ' "quoted" Loop
        If InStr(line, word) > 0 And Left(line, 1) <> "'" Then
            CountLines = CountLines + 1
        End If
    Loop
    stream.Close
End Function

Rem an old remark: If x Then
Set fso = CreateObject("Scripting.FileSystemObject")
total = CountLines(WScript.Arguments(0), "検索")
if IsNull(total) then WScript.Echo "it's nothing" & vbCrLf
MsgBox total & " 件", vbInformation
