# Completion for bash, made from the command line's description.

_petal() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} command=""
    [ "$COMP_CWORD" -gt 1 ] && command=${COMP_WORDS[1]}
    [ "$command" = report ] && [ "$COMP_CWORD" -gt 2 ] && command="report ${COMP_WORDS[2]}"
    # bash takes "-O NAME=VALUE" for three words
    if [ "$current" = "=" ]; then
        previous="$previous=" current=""
    elif [ "$previous" = "=" ]; then
        previous="${COMP_WORDS[COMP_CWORD-2]}="
    fi
    local words=""
    case "$command:$previous" in
    'import:--files-from') words="" ;;
    'import:-j'|'import:--jobs') words="" ;;
    'import:--timeout') words="" ;;
    'import:--max-memory') words="" ;;
    'import:--report') words="" ;;
    'import:--types') words="" ;;
    'import:--encoding') words="" ;;
    'import:-f'|'import:--format') words="json tree uml plantuml mermaid dot sql html none" ;;
    'import:-O') words="places= flavour= association-class= primitives= stereotype. scope= diagram= package= members= operations= direction= max-classes= positions= dialect= tables= inheritance= key= names= name-limit= type-map= map=" ;;
    'import:-o') words="" ;;
    'import:--log-level') words="FATAL ERROR WARNING STATUS DEBUG" ;;
    'import:--log-format') words="text json" ;;
    'import:--log') words="" ;;
    'import:--units') words="require warn skip" ;;
    'import:--path-map') words="" ;;
    'import:--unit-dir') words="" ;;
    'import:--ledger') words="" ;;
    'import:--ledger-detail') words="named all" ;;
    'import:--fail-on') words="loss damage warning encoding omission" ;;
    'import:places=') words="true false" ;;
    'import:flavour=') words="eclipse omg xmi21" ;;
    'import:association-class=') words="fold split" ;;
    'import:primitives=') words="local uml" ;;
    'import:stereotype.=') words="" ;;
    'import:scope=') words="model packages diagrams" ;;
    'import:diagram=') words="" ;;
    'import:package=') words="" ;;
    'import:members=') words="all public none" ;;
    'import:operations=') words="true false" ;;
    'import:direction=') words="TB LR BT RL" ;;
    'import:max-classes=') words="" ;;
    'import:positions=') words="source none" ;;
    'import:dialect=') words="postgresql sqlite oracle" ;;
    'import:tables=') words="auto all persistent" ;;
    'import:inheritance=') words="joined single concrete" ;;
    'import:key=') words="natural surrogate" ;;
    'import:names=') words="snake asis" ;;
    'import:name-limit=') words="" ;;
    'import:type-map=') words="" ;;
    'import:map=') words="" ;;
    'units:--units') words="require warn skip" ;;
    'units:--path-map') words="" ;;
    'units:--unit-dir') words="" ;;
    'report merge:-o') words="" ;;
    'formats:formats') words="json tree uml plantuml mermaid dot sql html none" ;;
    'schema:schema') words="diagrams diff formats info ledger log model report units version" ;;
    'draw:--diagram') words="" ;;
    'draw:-o') words="" ;;
    'draw:--as') words="svg drawio" ;;
    'draw:-O') words="places= flavour= association-class= primitives= stereotype. scope= diagram= package= members= operations= direction= max-classes= positions= dialect= tables= inheritance= key= names= name-limit= type-map= map=" ;;
    'draw:-j'|'draw:--jobs') words="" ;;
    'draw:--units') words="require warn skip" ;;
    'draw:--path-map') words="" ;;
    'draw:--unit-dir') words="" ;;
    'draw:places=') words="true false" ;;
    'draw:flavour=') words="eclipse omg xmi21" ;;
    'draw:association-class=') words="fold split" ;;
    'draw:primitives=') words="local uml" ;;
    'draw:stereotype.=') words="" ;;
    'draw:scope=') words="model packages diagrams" ;;
    'draw:diagram=') words="" ;;
    'draw:package=') words="" ;;
    'draw:members=') words="all public none" ;;
    'draw:operations=') words="true false" ;;
    'draw:direction=') words="TB LR BT RL" ;;
    'draw:max-classes=') words="" ;;
    'draw:positions=') words="source none" ;;
    'draw:dialect=') words="postgresql sqlite oracle" ;;
    'draw:tables=') words="auto all persistent" ;;
    'draw:inheritance=') words="joined single concrete" ;;
    'draw:key=') words="natural surrogate" ;;
    'draw:names=') words="snake asis" ;;
    'draw:name-limit=') words="" ;;
    'draw:type-map=') words="" ;;
    'draw:map=') words="" ;;
    'catalog:--files-from') words="" ;;
    'catalog:-j'|'catalog:--jobs') words="" ;;
    'catalog:--timeout') words="" ;;
    'catalog:--max-memory') words="" ;;
    'catalog:--types') words="" ;;
    'catalog:--encoding') words="" ;;
    'catalog:--units') words="require warn skip" ;;
    'catalog:--path-map') words="" ;;
    'catalog:--unit-dir') words="" ;;
    'catalog:-o') words="FILE DATABASE" ;;
    'catalog:--source') words="none objects all" ;;
    'catalog:--part') words="" ;;
    'catalog:--ask') words="" ;;
    'diff:-f'|'diff:--format') words="text json markdown html" ;;
    'diff:-o') words="" ;;
    'diff:--color') words="auto always never" ;;
    'diff:--renames') words="content quid no" ;;
    'diff:--show') words="" ;;
    'diff:--ignore') words="" ;;
    'diff:--ignore-file') words="" ;;
    'diff:--fail-on') words="breaking any RULE" ;;
    'diff:--types') words="" ;;
    'diff:--encoding') words="" ;;
    'diff:--units') words="require warn skip" ;;
    'diff:--path-map') words="" ;;
    'diff:--unit-dir') words="" ;;
    *)
        case "$command:$current" in
        ':-'*) words="-h --help --version --json" ;;
        'import:-'*) words="-h --help --files-from -0 --null -j --jobs --timeout --max-memory --in-process --keep-going --fail-fast --resume -q --quiet --report --types --encoding -f --format -O -o --log-level --log-format --log --units --path-map --unit-dir --ledger --ledger-detail --fail-on" ;;
        'info:-'*) words="-h --help --json" ;;
        'units:-'*) words="-h --help --json --units --path-map --unit-dir" ;;
        'report merge:-'*) words="-h --help -o" ;;
        'report:'*) words="merge" ;;
        'formats:-'*) words="-h --help --json" ;;
        'schema:-'*) words="-h --help" ;;
        'draw:-'*) words="-h --help --list --json --diagram -o --as -O -j --jobs -q --quiet --units --path-map --unit-dir" ;;
        'catalog:-'*) words="-h --help --files-from -0 --null -j --jobs --timeout --max-memory --types --encoding --units --path-map --unit-dir -o --source -q --quiet --part --merge --ask --json --csv" ;;
        'diff:-'*) words="-h --help -f --format --stat -o --color --renames --show --ignore --ignore-file --fail-on --rules --git -q --quiet --types --encoding --units --path-map --unit-dir" ;;
        'textconv:-'*) words="-h --help" ;;
        'options:-'*) words="-h --help" ;;
        'spec:-'*) words="-h --help" ;;
        ':'*) words="import info units report formats schema draw catalog diff textconv options spec" ;;
        esac ;;
    esac
    # shellcheck disable=SC2207 # the words hold no blanks
    COMPREPLY=($(compgen -W "$words" -- "$current"))
    case "${COMPREPLY[0]-}" in *[=.]) compopt -o nospace 2>/dev/null ;; esac
}
complete -o default -F _petal petal
