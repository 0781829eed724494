# Unpacks the program if it is new, runs it, and keeps its result beside it. In check mode nothing
# is unpacked and a repair is rehearsed.
[CmdletBinding(SupportsShouldProcess)]
param (
    [Parameter(Mandatory)][ValidateSet('scan', 'fix')][string]$Action,
    [string]$Program,
    [Parameter(Mandatory)][string]$Folder,
    [string]$Zip,
    [string]$Arguments,
    [ValidateSet('sure', 'likely', 'unsure')][string]$MinConfidence = 'sure'
)

$ErrorActionPreference = 'Stop'
$Ansible.Changed = $false
$Ansible.Result = @{ hasResult = $false }

if (-not $Program) {
    $Program = "$Folder\program\zelvreg-console.exe"
    $mark = "$Folder\unpacked"
    if (-not $Ansible.CheckMode) {
        $path = "$Folder\$Zip"
        $hash = (Get-FileHash -LiteralPath $path).Hash
        if (-not (Test-Path -LiteralPath $mark) -or (Get-Content -LiteralPath $mark) -ne $hash) {
            # What has been repaired can be undone with the files of the old version, so they stay.
            Add-Type -AssemblyName System.IO.Compression.FileSystem
            $archive = [System.IO.Compression.ZipFile]::OpenRead($path)
            foreach ($entry in $archive.Entries) {
                # All of it is in one folder, named after the version.
                $name = $entry.FullName.Substring($entry.FullName.IndexOf('/') + 1)
                $target = [System.IO.Path]::GetFullPath("$Folder\program\$name")
                $isInside = $target.StartsWith("$Folder\program\", 'OrdinalIgnoreCase')
                $isKept = $name -eq 'zelvreg.ini' -and (Test-Path -LiteralPath $target)
                if ($entry.Name -and $isInside -and -not $isKept) {
                    [void][System.IO.Directory]::CreateDirectory((Split-Path -Parent $target))
                    [System.IO.Compression.ZipFileExtensions]::ExtractToFile($entry, $target, $true)
                }
            }
            $archive.Dispose()
            Set-Content -LiteralPath $mark -Value $hash
            $Ansible.Changed = $true
        }
    }
}
if (-not (Test-Path -LiteralPath $Program)) {
    if ($Ansible.CheckMode) {
        $Ansible.Result = @{ hasResult = $false; line = 'the program is not there yet' }
        return
    }
    $Ansible.Failed = $true
    $Ansible.Result = @{ hasResult = $false; line = "there is no $Program" }
    return
}

$options = "$Action $Arguments --json"
if ($Action -eq 'fix') {
    $options += " --min-confidence $MinConfidence"
    if ($Ansible.CheckMode) {
        $options += ' --dry-run'
    } else {
        $options += ' --yes'
    }
}
[void][System.IO.Directory]::CreateDirectory($Folder)
$start = New-Object System.Diagnostics.ProcessStartInfo
$start.FileName = $Program
$start.Arguments = $options
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
$lines = @($errors.Result.Trim() -split "`r?`n")

# A result may come with status 2 as well: then it is of what could be scanned.
$hasResult = $output.TrimStart().StartsWith('{')
if ($hasResult) {
    $bytes = (New-Object System.Text.UTF8Encoding $false).GetBytes($output)
    [System.IO.File]::WriteAllBytes("$Folder\result.json", $bytes)
}
# Inside of a text each quotation mark has a backslash before it.
$match = [regex]::Match($output, '(?<!\\)"(?:repaired|rows)": *([0-9]+)')
$repaired = 0
if ($match.Success) {
    $repaired = [int]$match.Groups[1].Value
}
if ($repaired -gt 0) {
    $Ansible.Changed = $true
}
$Ansible.Failed = $process.ExitCode -notin 0, 1
$Ansible.Result = @{
    hasResult = $hasResult
    status    = $process.ExitCode
    repaired  = $repaired
    line      = $lines[-1]
}
