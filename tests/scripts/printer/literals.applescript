return {"a\"b\\c", 1, -2.5, true, missing value, {}, {a:1, |b c|:{2}, |end|:3}, "tab	line
", alias "/x/y", text}
-- expect reply: {"a\"b\\c", 1, -2.5, true, missing value, {}, {a:1, b c:{2}, |end|:3}, "tab\tline\n", alias "/x/y", text}
-- next script
set l to {1}
repeat with x in l
end repeat
return x
-- expect reply: 1
