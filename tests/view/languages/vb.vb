' 検索した行を数える。don't run it twice
Option Strict On
Imports System.IO

#Region "Count"
Public Class HitCounter
    Private ReadOnly _word As String
    Private Const Limit As Integer = &HFF

    REM an old remark: If x Then
    Public Sub New(word As String)
        _word = word ' "quoted" End Sub
    End Sub

    <Obsolete("使わない")>
    Public Function Count(path As String) As Long
        Dim total As Long = 0
        For Each line As String In File.ReadLines(path)
            If line.Contains(_word) AndAlso Not line.StartsWith("'") Then
                total += 1
            End If
        Next
        If total = 0 Then MsgBox("見つからない: it's none", vbOKOnly)
        dim started as Date = #1/31/2026#
        Return If(total > Limit, Nothing, total)
    End Function
End Class
#End Region
