# Checks on a real Windows what no other system can show, and prints a result to paste.
#
#   powershell -ExecutionPolicy Bypass -File windows-proof.ps1 [-Program FILE] [-Hive FILE] [-Quiet]
#
# -Program  the zelvreg-console.exe of an installed or an unpacked copy; else the installed one
# -Hive     a hive that zelvreg has repaired on Linux: a copy of it is loaded
# -Quiet    asks nothing; what only eyes can see is left out
#
# Run it once as an ordinary user and once as an administrator. It installs nothing. It writes to the
# key HKCU\Software\ZelvregProof and to a new folder in the folder for temporary files, and removes both
# at the end. It never repairs. Questions are answered with y, n, or s for what was not tried.
# Exit status 0: nothing failed. 1: something did. 2: there is no program to check.
param([string]$Program = '', [string]$Hive = '', [switch]$Quiet)

$ErrorActionPreference = 'Stop'
$TestKey = 'HKCU:\Software\ZelvregProof'
$Folder = Join-Path ([System.IO.Path]::GetTempPath()) ('zelvreg-proof-' + [guid]::NewGuid().ToString('N'))
$Results = New-Object System.Collections.Specialized.OrderedDictionary

# A step ends with its outcome: nothing or $true is a pass, $false a failure, a text why it was left out.
function Step([string]$name, [scriptblock]$action) {
    try {
        $outcome = & $action | Select-Object -Last 1
        if ($outcome -is [string]) {
            $Results[$name] = "left out: $outcome"
        } elseif ($outcome -eq $false) {
            $Results[$name] = 'FAILED'
        } else {
            $Results[$name] = 'passed'
        }
    } catch {
        $Results[$name] = "FAILED: $($_.Exception.Message)"
    }
    Write-Output ('{0}: {1}' -f $name, $Results[$name])
}

# What only a person can see.
function Ask([string]$name, [string]$question) {
    $answer = 's'
    if (-not $Quiet) {
        do {
            $answer = (Read-Host "$question [y/n/s]").Trim().ToLowerInvariant()
        } while ($answer -notin 'y', 'n', 's')
    }
    $Results[$name] = @{ y = 'seen'; n = 'FAILED'; s = 'left out: not tried' }[$answer]
}

# Runs the program and gives its exit status and what it has printed.
function Invoke-Program([string]$arguments) {
    $start = New-Object System.Diagnostics.ProcessStartInfo
    $start.FileName = $Program
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

# The installed program, as its installer says for the event log.
function Find-Program {
    $source = 'HKLM:\SYSTEM\CurrentControlSet\Services\EventLog\Application\zelvreg'
    if (Test-Path -LiteralPath $source) {
        return (Get-Item -LiteralPath $source).GetValue('EventMessageFile')
    }
    return ''
}

# Who may write into a folder besides administrators, the system and its installer.
function Get-Writer([string]$path) {
    $trusted = 'S-1-5-32-544', 'S-1-5-18', 'S-1-3-0',
        'S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464'
    $writing = [System.Security.AccessControl.FileSystemRights]'WriteData, AppendData, Delete, ChangePermissions'
    $list = (Get-Acl -LiteralPath $path).GetAccessRules($true, $true, [System.Security.Principal.SecurityIdentifier])
    return $list | Where-Object {
        $_.AccessControlType -eq 'Allow' -and ($_.FileSystemRights -band $writing) -and
        $_.IdentityReference.Value -notin $trusted
    }
}

if (-not $Program) {
    $Program = Find-Program
}
if (-not $Program -or -not (Test-Path -LiteralPath $Program)) {
    Write-Output 'There is no zelvreg-console.exe; name it with -Program.'
    exit 2
}
$Program = (Resolve-Path -LiteralPath $Program).ProviderPath
$Window = Join-Path (Split-Path $Program) 'zelvreg.exe'
$Identity = [System.Security.Principal.WindowsIdentity]::GetCurrent()
$Elevated = (New-Object System.Security.Principal.WindowsPrincipal $Identity).IsInRole('Administrators')
New-Item -ItemType Directory -Path $Folder | Out-Null
New-Item -Path $TestKey -Force | Out-Null

try {
Step 'version' {
    (Invoke-Program '--version').Output -match '[0-9]+\.[0-9]+\.[0-9]+'
}
Step 'doctor' {
    $told = Invoke-Program 'doctor --json'
    $told.Output | ConvertFrom-Json | Out-Null
    $told.Status -ne 2
}
Step 'rights' {
    $told = Invoke-Program 'scan --only app-paths,startup --json'
    $result = $told.Output | ConvertFrom-Json
    $told.Status -in 0, 1 -and $null -ne $result.unseen
}
Step 'search' {
    $there = Join-Path $Folder 'there.txt'
    Set-Content -LiteralPath $there -Value 'x'
    Set-ItemProperty -LiteralPath $TestKey -Name 'Gone' -Value (Join-Path $Folder 'zelvreg-proof-gone.txt')
    Set-ItemProperty -LiteralPath $TestKey -Name 'There' -Value $there
    $told = Invoke-Program 'search zelvreg-proof --in HKCU --data --json'
    $named = ($told.Output | ConvertFrom-Json).findings | ForEach-Object { $_.badValue }
    @(@($named) -match 'zelvreg-proof-gone').Count -eq 1 -and -not (@($named) -match 'there\.txt')
}
Step 'lock' {
    $mutex = New-Object System.Threading.Mutex $true, 'Global\ZelvaneFixRegistryProblems'
    try {
        (Invoke-Program 'scan --only fonts --quiet').Status -in 0, 1
    } finally {
        $mutex.Dispose()
    }
}
Step 'lock-link' {
    if (-not $Elevated) {
        'it needs an administrator'
    } else {
        $target = Join-Path $Folder 'behind-a-link.txt'
        Set-Content -LiteralPath $target -Value 'x'
        $link = Join-Path $env:windir 'zelvreg.lock'
        New-Item -ItemType SymbolicLink -Path $link -Target $target | Out-Null
        Invoke-Program 'scan --only fonts --quiet' | Out-Null
        $isKept = Test-Path -LiteralPath $target
        if (Test-Path -LiteralPath $link) {
            Remove-Item -LiteralPath $link -Force
        }
        $isKept
    }
}
Step 'libraries' {
    Copy-Item -LiteralPath $Program -Destination $Folder
    $planted = foreach ($name in 'bcrypt.dll', 'cryptbase.dll', 'oleacc.dll', 'uxtheme.dll', 'version.dll') {
        $system = Join-Path $env:windir "SysWOW64\$name"
        if (-not (Test-Path -LiteralPath $system)) {
            $system = Join-Path $env:windir "System32\$name"
        }
        Copy-Item -LiteralPath $system -Destination $Folder -PassThru
    }
    $copy = Join-Path $Folder (Split-Path $Program -Leaf)
    $process = Start-Process -FilePath $copy -ArgumentList 'scan --quiet' -PassThru -WindowStyle Hidden
    Start-Sleep -Milliseconds 500
    $loaded = @()
    foreach ($file in $planted) {
        # A library that is loaded cannot be deleted.
        try {
            Remove-Item -LiteralPath $file.FullName
        } catch {
            $loaded += $file.Name
        }
    }
    $wasRunning = -not $process.HasExited
    $process.WaitForExit()
    if ($loaded) {
        throw "loaded from the program's folder: $loaded"
    }
    if (-not $wasRunning) {
        'the scan had ended before it was looked at'
    }
}
Step 'folder' {
    if ($Program -notlike "$env:ProgramFiles*" -and $Program -notlike "${env:ProgramFiles(x86)}*") {
        'this copy is not installed'
    } else {
        -not (Get-Writer (Split-Path $Program))
    }
}
Step 'signature' {
    $state = (Get-AuthenticodeSignature -LiteralPath $Window).Status
    if ($state -eq 'NotSigned') {
        'this copy is not signed'
    } else {
        $state -eq 'Valid'
    }
}
Step 'profiles' {
    if (-not $Elevated) {
        'it needs an administrator'
    } else {
        $told = Invoke-Program 'scan --user all --only startup --json'
        $left = Get-ChildItem 'Registry::HKEY_USERS' -ErrorAction SilentlyContinue |
            Where-Object { $_.PSChildName -like 'zelvreg-*' }
        ($told.Output | ConvertFrom-Json).users.Count -ge 1 -and -not $left
    }
}
Step 'repaired-hive' {
    if (-not $Hive) {
        'no hive was named (-Hive)'
    } else {
        $copy = Join-Path $Folder 'hive'
        Copy-Item -LiteralPath $Hive -Destination $copy
        $calls = '[DllImport("advapi32.dll", CharSet = CharSet.Unicode)] public static extern int ' +
            'RegLoadAppKeyW(string file, out IntPtr key, int rights, int options, int zero);' +
            '[DllImport("advapi32.dll")] public static extern int RegCloseKey(IntPtr key);'
        $api = Add-Type -MemberDefinition $calls -Name 'Hives' -Namespace 'ZelvregProof' -PassThru
        $key = [IntPtr]::Zero
        $status = $api::RegLoadAppKeyW($copy, [ref]$key, 0x20019, 0, 0)
        if ($status -eq 0) {
            $api::RegCloseKey($key) | Out-Null
        }
        $status -eq 0
    }
}
Step 'event-log' {
    if (-not (Find-Program)) {
        'this copy is not installed'
    } else {
        Invoke-Program 'scan --only fonts --quiet' | Out-Null
        $entry = Get-WinEvent -FilterHashtable @{ LogName = 'Application'; ProviderName = 'zelvreg' } -MaxEvents 1
        $entry.Message -match '[a-z]{3}'
    }
}

Ask 'consent' 'Start zelvreg.exe from Explorer. Does Windows ask for consent once, and does the window open then?'
Ask 'smartscreen' 'Start a copy that a browser has downloaded. Is there no warning but that of an unknown publisher?'
Ask 'taskbar' 'Start a long scan. Does the button on the taskbar show how far it is, and end clean after Cancel?'
Ask 'high-contrast' 'Switch to a high contrast theme while the window is open. Are all texts and buttons readable?'
Ask 'monitors' 'Drag the window to a monitor of another resolution. Is it sharp there, and nothing cut?'
Ask 'screen-reader' 'With Narrator: are a finding, its tick and how sure it is read out, and the end of a scan?'
Ask 'help-book' 'Press F1 on the results. Does the help open at the page that describes them?'
Ask 'associations' 'Repair a dead file extension, then undo it. Does Explorer show the icons of before, at the latest after the next sign-in?'
Ask 'permissions' 'After a repair and its undo: has the key in the registry editor the permissions of before?'
Ask 'group-policy' 'Assign the MSI by Group Policy. Is zelvreg there after a restart, and gone once unassigned?'
Ask 'intune' 'Run fleet\intune\detect.ps1 as SYSTEM. Does it print one line and end with 0 or 1?'
} finally {
    Remove-Item -LiteralPath $TestKey -Recurse -ErrorAction SilentlyContinue
    Remove-Item -LiteralPath $Folder -Recurse -Force -ErrorAction SilentlyContinue
}

$system = Get-ItemProperty 'HKLM:\SOFTWARE\Microsoft\Windows NT\CurrentVersion'
Write-Output '', '=== zelvreg on a real Windows ==='
Write-Output "program: $((Get-Item -LiteralPath $Program).VersionInfo.ProductVersion)"
Write-Output "windows: $($system.ProductName) $($system.CurrentBuild), $env:PROCESSOR_ARCHITECTURE"
Write-Output "administrator: $Elevated"
foreach ($name in $Results.Keys) {
    Write-Output ('{0}: {1}' -f $name, $Results[$name])
}
Write-Output '=== end ==='
if (@($Results.Values) -like 'FAILED*') {
    exit 1
}
exit 0
