# Completion for the command "template": its commands, options and their values; file names elsewhere.

_template() {
    local word i current=${COMP_WORDS[COMP_CWORD]} suggestions arguments=()
    # Bash takes "--format=json" for three words.
    for ((i = 0; i <= COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ ${#arguments[@]} -gt 0 && ($word == = || ${arguments[-1]} == -i--*=) ]]; then
            arguments[-1]+=$word
        elif [[ -n $word ]]; then
            arguments+=("-i$word")
        fi
    done
    i=$((${#arguments[@]} - (${#COMP_WORDS[COMP_CWORD]} > 0)))
    suggestions=$("${COMP_WORDS[0]}" _complete --no-interaction -sbash -c"$i" "${arguments[@]}" 2>/dev/null)
    COMPREPLY=()
    while IFS= read -r word; do
        COMPREPLY+=("$word")
    done < <(compgen -W "$suggestions" -- "${current#=}")
}

complete -o bashdefault -o default -F _template template
