@echo off
rem Doppelklick genuegt. /kurz nimmt eine kleine Auswahl, ein Testname nur diesen.
setlocal
set SEE_MASK_NOZONECHECKS=1
if exist "%~dp0Dateien\tarv_kit.exe" goto pruefen
echo Bitte entpacken Sie zuerst das ganze ZIP-Archiv: rechte Maustaste, "Alle extrahieren".
echo Starten Sie dann pruefen.cmd in dem entpackten Ordner.
if "%~1"=="" pause
exit /b 2

:pruefen
"%~dp0Dateien\tarv_kit.exe" %*
set code=%errorlevel%
if "%~1"=="" pause
exit /b %code%
