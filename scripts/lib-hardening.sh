# What a module must carry against attacks, read from the file itself. To be sourced behind lib.sh.
# shellcheck shell=bash

# hardening_faults FILE prints one line for each protection that the file lacks.
hardening_faults() {
    local file=$1 headers dynamic symbols notes
    headers=$(readelf -lW "$file") dynamic=$(readelf -dW "$file") symbols=$(readelf -sW --dyn-syms "$file")
    notes=$(readelf -nW "$file" 2>/dev/null)
    [[ $headers == *GNU_RELRO* ]] || echo "no RELRO"
    [[ $dynamic =~ BIND_NOW|FLAGS_1.*NOW ]] || echo "no BIND_NOW"
    [[ ! $dynamic =~ RPATH|RUNPATH|TEXTREL ]] || echo "a path of libraries or text relocations"
    [[ $(grep GNU_STACK <<<"$headers") != *E* ]] || echo "an executable stack"
    [[ $symbols == *__stack_chk_fail* ]] || echo "no stack protector"
    [[ $symbols =~ __[a-z]+_chk@ ]] || echo "no fortified functions"
    case $(readelf -hW "$file") in
        *X86-64*) [[ $notes == *IBT*SHSTK* ]] || echo "no control-flow enforcement" ;;
        *AArch64*) [[ $notes == *BTI*PAC* || ${2-} == cross ]] || echo "no branch protection" ;;
    esac
}
