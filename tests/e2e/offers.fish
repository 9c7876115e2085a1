# What fish offers: offers.fish <lines> <offers> <script>... reads lines from one file and writes to another
# "== line" and then, one offer a line, the word, a tab and its description. For an interactive fish alone: others
# do not know where the cursor stands.
for script in $argv[3..]
    source $script
end
for line in (cat $argv[1])
    echo "== $line"
    complete -C"$line"
end >$argv[2]
