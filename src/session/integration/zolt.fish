# Zolt's shell integration for fish 3.1 and later: marks prompts, commands and their output (OSC 133) and reports the working
# directory (OSC 7). fish 4 does both by itself.
#
# Zolt starts fish with XDG_DATA_DIRS beginning with a folder in which this file is vendor configuration. It puts the
# variable back.

begin
    set -l folder (string replace -r '/fish/vendor_conf\.d/[^/]*$' '' -- (status filename))
    if set -q ZOLT_XDG_DATA_DIRS
        set -gx XDG_DATA_DIRS $ZOLT_XDG_DATA_DIRS
    else
        set -e XDG_DATA_DIRS
    end
    set -e ZOLT_XDG_DATA_DIRS
    # fish has made its own lists of it by now.
    for list in __fish_vendor_confdirs __fish_vendor_completionsdirs __fish_vendor_functionsdirs fish_complete_path fish_function_path
        set -q $list
        or continue
        set -l kept (string match -v -- "$folder/*" $$list)
        test "$kept" = "$$list"
        or set $list $kept
    end
end

if status is-interactive; and string match -qr '^3\.' -- $version
    function __zolt_prompt --on-event fish_prompt --on-event fish_cancel
        printf '\e]7;file://%s%s\a\e]133;A\a' (string escape --style=url -- "$hostname") (string escape --style=url -- "$PWD")
    end

    # fish announces blank lines, too, but runs nothing then.
    function __zolt_preexec --on-event fish_preexec
        string match -qr '\S' -- "$argv[1]"
        or return
        if test (string length -- "$argv[1]") -le 2000
            printf '\e]133;C;cmdline_url=%s\a' (string escape --style=url -- "$argv[1]")
        else
            printf '\e]133;C\a'
        end
    end

    function __zolt_postexec --on-event fish_postexec
        set -l result $status
        string match -qr '\S' -- "$argv[1]"
        and printf '\e]133;D;%s\a' $result
    end
end
