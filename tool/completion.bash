# Completion for the command "template": its commands, options and their values; file names elsewhere.

_template() {
    local word current=${COMP_WORDS[COMP_CWORD]} suggestions arguments=()
    for word in "${COMP_WORDS[@]}"; do
        [[ -z $word ]] || arguments+=("-i$word")
    done
    suggestions=$("${COMP_WORDS[0]}" _complete --no-interaction -sbash -c"$COMP_CWORD" "${arguments[@]}" 2>/dev/null)
    COMPREPLY=()
    while IFS= read -r word; do
        COMPREPLY+=("$word")
    done < <(compgen -W "$suggestions" -- "$current")
}

complete -o bashdefault -o default -F _template template
