" Command files of the examples; *.cmd would be batch files otherwise.
autocmd BufNewFile,BufRead */drafting/*.cmd,*/router/*.cmd set filetype=clui
