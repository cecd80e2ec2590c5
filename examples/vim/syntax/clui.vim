" What is the same in all languages: comments, strings, numbers, variables, words with arguments.
" The language server (docs/editors.md) knows the rest.

if exists("b:current_syntax")
  finish
endif

syntax case ignore
syntax match cluiComment /#.*$/ contains=@Spell
syntax match cluiVariable /\${[^}]*}\(\[\d*\]\)\?=\?/
syntax region cluiString start=/"/ skip=/\\./ end=/"/ oneline contains=cluiVariable
syntax region cluiString start=/'/ skip=/\\./ end=/'/ oneline contains=cluiVariable
syntax match cluiNumber /[-+]\?\<\d\+\(\.\d*\)\?\>/
syntax match cluiWord /[^ \t,"'#:]\+:/

highlight default link cluiComment Comment
highlight default link cluiString String
highlight default link cluiVariable Identifier
highlight default link cluiNumber Number
highlight default link cluiWord Keyword

setlocal commentstring=#\ %s
let b:current_syntax = "clui"
