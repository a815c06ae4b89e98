@echo off
rem Runs the tests in the folders next to this file, and writes proof.txt: the program's version and commit, the Windows
rem version and settings, the time and the failures of each test case, and in the last line whether all tests passed.
rem The tests change only the clipboard and need no administrator rights. Run this file on a machine without any of the
rem suite's components.
setlocal
cd /d "%~dp0"
set failed=
set without=
set native=%PROCESSOR_ARCHITECTURE%
if defined PROCESSOR_ARCHITEW6432 set native=%PROCESSOR_ARCHITEW6432%
set runs32=
if "%native%"=="x86" set runs32=yes
if exist "%SystemRoot%\SysWOW64\kernel32.dll" set runs32=yes

type BUILD.txt >proof.txt
>>proof.txt ver
>>proof.txt echo %native%
>>proof.txt reg query "HKLM\SOFTWARE\Microsoft\Windows NT\CurrentVersion" /v ProductName
>>proof.txt reg query "HKLM\SYSTEM\CurrentControlSet\Control\Nls\CodePage" /v ACP
>>proof.txt reg query "HKCU\Control Panel\International"

if defined runs32 (call :test win32) else set without=, without the 32-bit programs, which this Windows cannot run
if "%native%"=="x86" (set without=, without the 64-bit programs, which this Windows cannot run) else call :test win64

>>proof.txt echo.
if "%failed%"=="" (>>proof.txt echo passed%without%) else >>proof.txt echo failed:%failed%
type proof.txt
if "%failed%"=="" exit /b 0
exit /b 1

:test
call :run %1 vtv4v_tests
call :run %1 vtv4v_utf8_tests
call :run %1 vtv4v_driver "--test-suite=anywhere"
exit /b 0

:run
>>proof.txt echo.
>>proof.txt echo == %*
rem The program writes to its own file, because a process that it leaves running could keep proof.txt open.
%1\tests\%2.exe --duration --out=cases.txt %3
if not "%errorlevel%"=="0" set failed=%failed% %1\%2
type cases.txt >>proof.txt 2>&1
del cases.txt
