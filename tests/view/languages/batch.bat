@echo off
rem 検索した行を数える。don't double-click it
setlocal enabledelayedexpansion

:: another kind of remark: if exist x
set WORD=%~1
set /a TOTAL=0
if "%WORD%"=="" goto :usage

for %%f in (*.log *.txt) do (
    findstr /c:"%WORD%" "%%f" > nul
    if not errorlevel 1 (
        set /a TOTAL+=1
        echo %%f にある
    )
)

call :report "合計 rem" !TOTAL!
if %TOTAL% geq 100 exit /b 1
goto :eof & REM "quoted" end

:usage
echo usage: %0 WORD
exit /b 2

:report NAME COUNT
ECHO %~1: %2
Exit /B 0
