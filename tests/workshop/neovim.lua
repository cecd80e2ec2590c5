-- A client of the language server. Prints what the server says about a file, and what it offers in a
-- new line.

local clui, script, file = vim.env.CLUI, vim.env.LANGUAGE, vim.env.COMMANDS
vim.opt.runtimepath:append(vim.env.EXAMPLES .. "/vim")
vim.cmd("filetype on | syntax on | edit " .. file)
print("type " .. vim.bo.filetype .. "\n")

local id = vim.lsp.start_client({ name = "clui", cmd = { clui, "--lsp", script } })
vim.lsp.buf_attach_client(0, id)
vim.wait(20000, function() return #vim.diagnostic.get(0) > 0 end, 20)

local function tell()
  for _, each in ipairs(vim.diagnostic.get(0)) do
    print(("%d:%d %s\n"):format(each.lnum + 1, each.col + 1, each.message))
  end
end
tell()

-- A change, and what is offered in the new line.
vim.api.nvim_buf_set_lines(0, 0, 0, false, { "circle: 5,5 rad" })
local position = { textDocument = vim.lsp.util.make_text_document_params(), position = { line = 0, character = 15 } }
local answers = vim.lsp.buf_request_sync(0, "textDocument/completion", position, 20000)
for _, item in ipairs(answers[id].result.items) do
  print(("offer %s: %s\n"):format(item.label, item.documentation))
end
vim.lsp.stop_client(id)
vim.wait(20000, function() return vim.lsp.client_is_stopped(id) end, 20)
print("stopped " .. tostring(vim.lsp.client_is_stopped(id)) .. "\n")
vim.cmd("qall!")
