# What a module must carry against attacks, read from the file itself. To be sourced behind common.sh.
# shellcheck shell=bash

# hardening_faults FILE [packaged] prints one line for each protection that the file lacks. The stack protector is asked
# of packages only: a build by hand has the flags that its user gives.
hardening_faults() {
    local file=$1 headers dynamic start
    headers=$(readelf -lW "$file") dynamic=$(readelf -dW "$file")
    [[ $headers == *GNU_RELRO* ]] || echo "no RELRO"
    [[ $dynamic =~ BIND_NOW|FLAGS_1.*NOW ]] || echo "no BIND_NOW"
    [[ ! $dynamic =~ RPATH|RUNPATH|TEXTREL ]] || echo "a path of libraries or text relocations"
    [[ $(grep GNU_STACK <<<"$headers") != *E* ]] || echo "an executable stack"
    [[ ${2-} != packaged || $(readelf -sW --dyn-syms "$file") == *__stack_chk_fail* ]] || echo "no stack protector"
    # The first instruction of what may be called by an address: get_module is.
    case $(readelf -hW "$file") in
        *X86-64*)
            start=0x$(nm -D --defined-only "$file" | awk '$3 == "get_module" { print $1 }')
            objdump -d --start-address="$start" --stop-address=$((start + 4)) "$file" | grep -q endbr64 ||
                echo "no control-flow enforcement"
            ;;
        *AArch64*) ;;
        *) echo "no processor that is known here" ;;
    esac
}
