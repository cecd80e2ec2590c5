# A file full of mistakes, to see what the program says about each:
#
#     clui drafting.scm mistakes.cmd
#
# A mistake affects one word or the rest of its line; correct lines around it are drawn.

layer: plan  unit: 10

# Words
lien: 0,0 to: 10,0                   # not a word; what follows it is refused with it
line 0,0 to: 10,0                    # the colon is part of the word
LINE: 0,0 TO: 10,0                   # no mistake: capitals do not matter
cl                                   # a word, but no polyline is under way

# Commands
rect: 0,0 radius: 5                  # a rectangle has no radius,
to: 10,5                             # but it still needs its other corner
circle: 5,5
line: 0,0 to: 5,5                    # the circle needs its radius first
radius: 2
line: 0,0 to: 5,5 to: 9,9            # a line ends at its first `to:`
polyline: 0,0 to: 5,0 by: 0,5
undo                                 # not in the middle of a polyline
end

# Numbers
line: 0,zero to: 1,1
cancel
line: 0;0 to: 1,1                    # a line may break off before the comma, so the ";" is looked
cancel                               # at when the next line comes: this one is lost with it
arc: 0,0 radius: 1 angles: 0,400
circle: 0,0 radius: -3
stairs: 0,0 to: 9,30 steps: 1
line: 1e300,0 to: 0,0
cancel
origin: 1.5                          # a point has two numbers
stairs: 0,0 to: 9,30 steps: 99999999999
cancel

# Text and names
text: '") (quit) ("' at: 3,3         # no mistake: text is never read as a script
text: "no end at: 3,3
cancel
text: "ends"
save: half.svg                       # the text still needs its position
at: 3,3
fill: #c49a6c                        # a "#" begins a comment: this fill continues on the next line
"#c49a6c"
fill: purpel
colour: "red; stroke: none"
layer: ""
dash: wavy
save: /no/such/folder/plan.svg

# Variables
line: 0,${width} to: 1,1             # never set
cancel
${width}=12  ${depth}=-4  ${x}[2]=7
line: 0,${depth} to: 1,1             # a value that begins with a sign is a text, and no number
cancel
line: 0,${x} to: 1,1                 # an array without an index
cancel
line: 0,${x}[0] to: 1,1              # an element that was never set
cancel
line: 0,${x}[9] to: 1,1              # an element that does not exist
cancel
${wall_width}=3                      # no underscores in names
${width

# Groups and aliases
done                                 # no group is open
group: lost, 0,0
  line: 0,0 to: 1,1
  undo undo                          # one too many
done
place: chair at: 0,0
place: lost, ninety at: 0,0
rect: 0,0 group: inner, 5,5
  save: inner.svg                    # not while a rectangle waits below
done to: 3,3
alias: line:, "rect:"
alias: l, "line:"
alias: l, "rect:"
unalias: nothing
alias: loop, "loop"
loop                                 # an alias of itself

# A command that is never finished: the file ends in the middle of it, in a group.
where
group: open, 0,0
polyline: 0,0 to: 1,1
