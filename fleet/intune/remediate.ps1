# Repairs what zelvreg is sure of on this computer, after a safety export of all that it takes.
#
# Exit status 0: it is repaired, and the detection says so. 1: it is not, which the line tells. Runs
# as SYSTEM, and works on all users.

# The folder of zelvreg-console.exe if it is none of those that the installers use.
$Folder = ''
# What is repaired. The detection has the same line.
$Scope = '--user all'
# In seconds, for the scan; a repair that has begun is not given up.
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
        Write-Output 'zelvreg: not installed, so nothing was repaired'
        exit 1
    }
    $result = Invoke-Program $program "fix $Scope --min-confidence sure --yes --quiet --timeout $Timeout"
    if ($result.Status -eq 0) {
        Write-Output 'zelvreg: repaired'
        exit 0
    }
    # The last line of the program says what went wrong.
    $line = @($result.Errors.Trim() -split "`r?`n")[-1]
    if (-not $line) {
        $line = 'zelvreg: something that was to be repaired is still there'
    }
    Write-Output $line.Substring(0, [Math]::Min(2000, $line.Length))
    exit 1
} catch {
    Write-Output "zelvreg: nothing is known of the repair: $($_.Exception.Message)"
    exit 1
}
