# Runs the self-test on this machine: selftest.ps1 ZIP FOLDER
#
# The folder gets the unpacked self-test and report.html; the exit code is the self-test's. Wherever
# the system is not a Japanese one, its programs still get code page 932 (from Windows 11 and Server
# 2022 on): their manifests ask for it.
param([Parameter(Mandatory)] [string] $Zip, [Parameter(Mandatory)] [string] $Folder)
$ErrorActionPreference = 'Stop'

$codePage = '<activeCodePage xmlns="http://schemas.microsoft.com/SMI/2019/WindowsSettings">ja-JP</activeCodePage>'

Expand-Archive -Path $Zip -DestinationPath $Folder
foreach ($manifest in Get-ChildItem -Path $Folder -Recurse -Filter *.manifest) {
  $text = [IO.File]::ReadAllText($manifest.FullName)
  [IO.File]::WriteAllText($manifest.FullName, $text.Replace('</windowsSettings>', "$codePage</windowsSettings>"))
}
$report = Join-Path (Resolve-Path $Folder) 'report.html'
& (Join-Path $Folder 'karvel-selftest/karvel-selftest.exe') --report $report
exit $LASTEXITCODE
