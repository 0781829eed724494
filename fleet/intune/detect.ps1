# Says in one line whether zelvreg would repair anything on this computer.
#
# Exit status 1: it would, so the remediation is to run. 0: there is nothing to repair, or it could
# not be found out, which the line tells. Runs as SYSTEM, and looks at all users.

# The folder of zelvreg-console.exe if it is none of those that the installers use.
$Folder = ''
# What is looked at. The remediation has the same line.
$Scope = '--user all'
# In seconds.
$Timeout = 1800

$ErrorActionPreference = 'Stop'

# Where the program is: as its installer says, which registers it for the event log, or in the folder
# that both installers propose.
function Find-Program {
    $programs = @()
    if ($Folder) {
        $programs += "$Folder\zelvreg-console.exe"
    }
    $source = 'HKLM:\SYSTEM\CurrentControlSet\Services\EventLog\Application\zelvreg'
    if (Test-Path -LiteralPath $source) {
        $programs += (Get-Item -LiteralPath $source).GetValue('EventMessageFile')
    }
    foreach ($parent in ${env:ProgramFiles(x86)}, $env:ProgramFiles) {
        if ($parent) {
            $programs += "$parent\zelvreg\zelvreg-console.exe"
        }
    }
    foreach ($candidate in $programs) {
        if ($candidate -and (Test-Path -LiteralPath $candidate)) {
            return $candidate
        }
    }
    return ''
}

# Runs the program and gives its exit status and what it has printed.
function Invoke-Program([string]$program, [string]$arguments) {
    $start = New-Object System.Diagnostics.ProcessStartInfo
    $start.FileName = $program
    $start.Arguments = $arguments
    $start.UseShellExecute = $false
    $start.CreateNoWindow = $true
    $start.RedirectStandardOutput = $true
    $start.RedirectStandardError = $true
    $start.StandardOutputEncoding = [System.Text.Encoding]::UTF8
    $start.StandardErrorEncoding = [System.Text.Encoding]::UTF8
    $process = [System.Diagnostics.Process]::Start($start)
    # Both at once, so that neither waits for the other to be read.
    $errors = $process.StandardError.ReadToEndAsync()
    $output = $process.StandardOutput.ReadToEnd()
    $process.WaitForExit()
    return @{ Status = $process.ExitCode; Output = $output; Errors = $errors.Result }
}

try {
    $program = Find-Program
    if (-not $program) {
        Write-Output 'zelvreg: not installed, so nothing is known'
        exit 0
    }
    $result = Invoke-Program $program "detect $Scope --timeout $Timeout"
    $line = ($result.Output + $result.Errors).Trim()
    Write-Output $line.Substring(0, [Math]::Min(2000, $line.Length))
    if ($result.Status -eq 1) {
        exit 1
    }
    exit 0
} catch {
    Write-Output "zelvreg: nothing is known: $($_.Exception.Message)"
    exit 0
}
