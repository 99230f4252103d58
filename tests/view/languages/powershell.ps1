#Requires -Version 7
<# 検索した行を数える。
   Don't dot-source it: function x { return 1 } #>
[CmdletBinding()]
param(
    [Parameter(Mandatory = $true)]
    [string] $Word,
    [string[]] $Path = @('*.log', "C:\Temp # x")
)

function Get-HitCount {
    param([string] $File)
    $total = 0 # 件数 "quoted"
    foreach ($line in Get-Content -LiteralPath $File -Encoding utf8) {
        if ($line -match $Word -and $line -notlike '#*') {
            $total++
        } elseif ($null -eq $line) { continue }
    }
    return $total
}

try {
    $Path | ForEach-Object { Get-HitCount -File $_ } | Measure-Object -Sum
    Write-Host "終わり: ${Word} $env:USERNAME" -ForegroundColor Green
    if ((Get-Item log.txt).Length -gt 10MB) { throw 'too large' }
} finally {
    Remove-Variable Word # it's done
}
