-- What a user of Neovim does in a template, with the configuration of the manual. Prints the outcome as JSON.
-- Run by neovim.test.js, in a folder with the templates that it makes.

local outcome = {}

local function wait(what, condition)
    if not vim.wait(20000, condition, 20) then
        outcome.failed = what
        io.stdout:write(vim.fn.json_encode(outcome) .. '\n')
        vim.cmd('cquit')
    end
end

local function findings()
    return vim.tbl_map(function(each)
        return string.format('%d:%d-%d %s', each.lnum, each.col, each.end_col, each.code or each.message)
    end, vim.diagnostic.get(0))
end

vim.cmd('edit page.tpl')
wait('client', function() return #vim.lsp.buf_get_clients(0) > 0 end)
wait('findings', function() return #vim.diagnostic.get(0) > 0 end)
outcome.findings = findings()

-- typed, not saved
vim.api.nvim_buf_set_text(0, 1, 0, 1, 5, { '{title}' })
wait('no findings', function() return #vim.diagnostic.get(0) == 0 end)

vim.api.nvim_win_set_cursor(0, { 3, 12 })
vim.api.nvim_feedkeys('gd', 'x', false)
wait('definition', function() return vim.fn.expand('%:t') == 'part.tpl' end)
outcome.definition = vim.fn.expand('%')
wait('findings of the include', function() return #vim.diagnostic.get(0) > 0 end)
outcome.include = findings()

vim.cmd('buffer page.tpl')
local function complete(line, column)
    vim.api.nvim_win_set_cursor(0, { line, column })
    local answers = vim.lsp.buf_request_sync(0, 'textDocument/completion', vim.lsp.util.make_position_params(), 20000)
    for _, answer in pairs(answers) do
        local items = vim.lsp.util.text_document_completion_list_to_complete_items(answer.result, '')
        return vim.tbl_map(function(item) return item.word end, items)
    end
end
vim.api.nvim_buf_set_lines(0, 4, 4, false, { 'ü😀{htmlspecialchars user::}' })
outcome.completion = complete(5, #'ü😀{htmlspecialchars user::')

vim.api.nvim_win_set_cursor(0, { 1, 10 })
vim.lsp.buf.rename('item')
wait('rename', function() return vim.api.nvim_buf_get_lines(0, 0, 1, false)[1] == '{dynamic item,rows}' end)
outcome.renamed = vim.api.nvim_buf_get_lines(vim.fn.bufnr('part.tpl'), 0, 1, false)[1]

io.stdout:write(vim.fn.json_encode(outcome) .. '\n')
vim.cmd('quitall!')
