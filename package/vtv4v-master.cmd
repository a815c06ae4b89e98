@echo off
rem Startet den Version Controller mit seiner Option. Ohne sie zeigt das Programm nichts.
start "" "%~dp0vtv4v.exe" -master
