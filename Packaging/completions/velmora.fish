# SPDX-License-Identifier: MIT
# fish completion for velmora

set -l commands lookup segment pinyin align probe recognize doctor settings onboarding toggle diagnostics quit autostart
complete -c velmora -f
complete -c velmora -s h -l help -d 'Print help'
complete -c velmora -n "not __fish_seen_subcommand_from $commands" -l version -d 'Print the version'
for pair in \
    'lookup:The word at a position of a text' \
    'segment:A text word by word' \
    'pinyin:Numbered pinyin to marked pinyin' \
    'align:Where a recognised line stands' \
    'probe:What would be read at a point of the screen' \
    'recognize:The text in a picture' \
    'doctor:What this system lacks' \
    'settings:Show the settings' \
    'onboarding:Show the introduction' \
    'toggle:Switch hover lookup on or off' \
    'diagnostics:Print the state of hover lookup' \
    'quit:End the running program' \
    'autostart:Start with the desktop session'
    set -l parts (string split -m 1 : $pair)
    complete -c velmora -n "not __fish_seen_subcommand_from $commands" -a $parts[1] -d $parts[2]
end
complete -c velmora -n '__fish_seen_subcommand_from lookup segment pinyin align probe recognize doctor' -l json -d 'Print JSON'
complete -c velmora -n '__fish_seen_subcommand_from lookup segment probe recognize' -l dictionary -r -F -d 'Use this word list'
complete -c velmora -n '__fish_seen_subcommand_from lookup' -l offset -x -d 'The character'
complete -c velmora -n '__fish_seen_subcommand_from lookup' -l json-lines -d 'Answer lines of JSON'
complete -c velmora -n '__fish_seen_subcommand_from align' -l reference -x -d 'A text the line may come from'
complete -c velmora -n '__fish_seen_subcommand_from probe recognize' -l at -x -d 'The point, as X,Y'
complete -c velmora -n '__fish_seen_subcommand_from probe recognize' -l explain -d 'List every attempt'
complete -c velmora -n '__fish_seen_subcommand_from probe' -l record -x -a '(__fish_complete_directories)' -d 'Keep what was seen'
complete -c velmora -n '__fish_seen_subcommand_from recognize' -l annotate -r -F -d 'Draw what was found'
complete -c velmora -n '__fish_seen_subcommand_from recognize' -F
complete -c velmora -n '__fish_seen_subcommand_from diagnostics' -l copy -d 'Put it on the clipboard instead'
complete -c velmora -n '__fish_seen_subcommand_from autostart' -a 'on off status'
