# Completion of declarium-cli for PowerShell. Dot-source this file from the profile:
#   . path\to\declarium-cli.ps1

Register-ArgumentCompleter -Native -CommandName 'declarium-cli', 'declarium-cli.exe' -ScriptBlock {
    param($wordToComplete, $commandAst, $cursorPosition)

    $common = '--help', '--json', '--color', '--no-history'
    $options = @{
        'new'       = '--force'
        'list'      = '--kind'
        'export'    = '--target', '--force'
        'rename'    = '--force'
        'delete'    = '--force'
        'databases' = @()
        'import'    = '--replace', '--create', '--reading', '--encoding', '--force'
        'parse'     = '--modules', '--uses', '--target'
        'check'     = '--against', '--target', '--windows', '--format', '--fail-on', '--baseline',
                      '--fix', '--rules'
        'audit'     = '--against', '--format', '--output', '-o', '--fail-on', '--apply',
                      '--replace', '--diff', '--force'
        'convert'   = '--target', '--against', '--output', '-o', '--in-place', '--diff',
            '--declare-wide', '--force'
        'show'      = '--target'
        'shared'    = '--closure', '--constants'
        'facts'     = @()
        'find'      = '--kind'
        'complete'  = '--kind'
        'search'    = '--kinds', '--name', '--name-whole', '--type', '--type-whole', '--const',
                      '--const-whole', '--value', '--value-whole', '--value-number', '--arg',
                      '--arg-whole', '--text', '--text-whole'
        'basket'    = '--scope', '--target', '--closure', '--output', '-o', '--force'
        'insert'    = '--scope', '--target', '--closure', '--encoding', '--force', '--missing',
                      '--project', '--dry-run', '--diff', '--as', '--without'
        'missing'   = '--library', '--scope', '--target', '--insert', '--dry-run', '--diff'
        'generate'  = '--output', '-o', '--library', '--target', '--check', '--force'
        'history'   = @()
        'restore'   = '--output', '-o', '--force'
    }
    $values = @{
        '--color' = 'auto', 'always', 'never'
        '--kind'  = 'const', 'declare', 'type'
        '--kinds' = 'const', 'declare', 'type'
        '--scope' = 'Private', 'Public'
        '--reading' = 'vb', 'literal'
        '--windows' = '5.1', '6.0', '6.1', '10.0'
        '--format' = 'text', 'json', 'sarif', 'html'
        '--fail-on' = 'error', 'warning', 'note'
        '--target' = 'vb6', 'vba7', 'vba7-only', 'twinbasic'
        '--encoding' = 'windows-874', 'windows-1250', 'windows-1251', 'windows-1252',
                       'windows-1253', 'windows-1254', 'windows-1255', 'windows-1256',
                       'windows-1257', 'windows-1258', 'utf-8', 'utf-16le', 'utf-16be'
    }

    $words = @($commandAst.CommandElements | Select-Object -Skip 1 |
        Where-Object { $_.Extent.EndOffset -lt $cursorPosition } |
        ForEach-Object { $_.Extent.Text })
    $command = $words | Where-Object { $options.ContainsKey($_) } | Select-Object -First 1
    $previous = if ($words.Count -gt 0) { $words[-1] } else { '' }

    $candidates = if ($values.ContainsKey($previous)) {
        $values[$previous]
    } elseif (-not $command) {
        @($options.Keys | Sort-Object) + $common + '--version'
    } else {
        $common + $options[$command]
    }
    $candidates | Where-Object { $_ -like "$wordToComplete*" } | ForEach-Object {
        [System.Management.Automation.CompletionResult]::new($_, $_, 'ParameterValue', $_)
    }
}
