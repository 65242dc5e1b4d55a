# windows_text: a German text as the editor of every Windows reads it: marked as UTF-8, lines ended by CR LF. Sourced.
windows_text() { printf '\357\273\277' && sed 's/$/\r/'; }
