# Completion of kelvane for fish. Settings and their values are asked of the program itself.

# The names of all settings, each described by its type and value.
function __kelvane_settings
    kelvane settings list 2>/dev/null | string replace -r '^(\S+)\s+(.*)' '$1\t$2'
end

# What the setting that is being set may be set to, as far as it can be listed.
function __kelvane_values
    set -l key (commandline -opc)[-1]
    set -l setting (kelvane settings list 2>/dev/null | string match -r "^$key +(\S+) +(.*)")
    switch "$setting[2] $key"
        case 'boolean *'
            printf '%s\n' true false
        case 'choice trayIconShape'
            printf '%s\n' automatic wide square
        case 'choice trayIconColor'
            printf '%s\n' automatic light dark
        case '*'
            printf '%s\n' $setting[3]
    end
end

# Whether the words from `settings` on, before what is being written, are as the pattern says.
function __kelvane_follows -a pattern
    set -l words (commandline -opc)
    set -l at (contains -i -- settings $words)
    and string match -qr -- "^$pattern\$" "$words[$at..-1]"
end

set -l commands status details render settings doctor demo quit
set -l first "not __fish_seen_subcommand_from $commands"
complete -c kelvane -f
complete -c kelvane -n $first -a status -d 'Print the battery in one line'
complete -c kelvane -n $first -a details -d "Print the battery's details"
complete -c kelvane -n $first -a render -d 'Write the item as a PNG file'
complete -c kelvane -n $first -a settings -d 'List, get or set settings'
complete -c kelvane -n $first -a doctor -d 'Tell what this desktop lacks, and what to do about it'
complete -c kelvane -n $first -a demo -d 'Run on a scripted battery and leave pictures of it'
complete -c kelvane -n $first -a quit -d 'End the Kelvane that runs'
complete -c kelvane -n $first -l version -d 'Print the version'
complete -c kelvane -s h -l help -d 'Print help'
complete -c kelvane -n 'not __fish_seen_subcommand_from settings demo quit' -l no-upower -d 'Leave UPower out'
complete -c kelvane -n 'not __fish_seen_subcommand_from settings demo quit' -l power-supply -x \
    -a '(__fish_complete_directories)' -d 'Read the batteries from another folder'

complete -c kelvane -n '__fish_seen_subcommand_from status details doctor' -l json -d 'As JSON'
complete -c kelvane -n '__fish_seen_subcommand_from demo' -l out -x \
    -a '(__fish_complete_directories)' -d 'Folder for the pictures'

complete -c kelvane -n '__kelvane_follows settings' -a 'list get set'
complete -c kelvane -n "__kelvane_follows 'settings (get|set)'" -a '(__kelvane_settings)'
complete -c kelvane -n "__kelvane_follows 'settings set \S+'" -a '(__kelvane_values)'

set -l render '__fish_seen_subcommand_from render'
complete -c kelvane -n $render -l out -r -F -d 'The PNG file to write'
complete -c kelvane -n $render -l scale -x -d 'Pixels per point'
complete -c kelvane -n $render -l height -x -d "Height of the bar's slot in points"
complete -c kelvane -n $render -l shape -x -a 'wide square' -d "Shape of the bar's slot"
complete -c kelvane -n $render -l bar -x -a 'light dark' -d "The bar's colour"
complete -c kelvane -n $render -l font -x -d 'Font family'
complete -c kelvane -n $render -l set -x -a '(kelvane settings list 2>/dev/null | string replace -r " .*" "=")' \
    -d 'A setting for this picture'
complete -c kelvane -n $render -l level -x -d 'Charge from 0 to 1'
complete -c kelvane -n $render -l on-power -d 'A power adapter is connected'
complete -c kelvane -n $render -l not-charging -d 'It is, but the battery is not charging'
complete -c kelvane -n $render -l estimate -x -d 'Seconds until empty'
complete -c kelvane -n $render -l minutes-until-full -x -d 'Minutes until full'
complete -c kelvane -n $render -l warning -x -a 'none early final' -d "The system's warning"
