# The ground floor of a small house, drawn with drafting.scm:
#
#     clui drafting.scm house.cmd
#
# Numbers count modules of 910 mm, half a mat, by which houses in Japan are laid out. North is up.

title: "野辺の家 House by the Field - ground floor plan"
scale: 50
margin: 12,12
unit: ${module}

# Short words for frequent commands. An alias may break off before the arguments of its word.
alias: w, "wall:"
alias: b, "box"                      # an alias of an alias: box is replaced by rect:
alias: t, "text:"
alias: p, "place:"

# A variable can hold a number, or text that replaces it. Numbers that many lines of the building
# share are in arrays.
${outer}="thickness: 0.165"          # 150 mm
${inner}="thickness: 0.11"           # 100 mm
${mm}="unit: 1"
${x}[0]=0   ${x}[1]=3   ${x}[2]=5   ${x}[3]=7   ${x}[4]=9   ${x}[5]=10   ${x}[6]=13
${y}[0]=0   ${y}[1]=4   ${y}[2]=5   ${y}[3]=6   ${y}[4]=8
${east}=13  ${north}=8

# The layers, the lowest first, each with its look.
layer: sheet       colour: charcoal  pen: ${pens}[3]
layer: garden      colour: leaf      pen: ${pens}[0]
layer: axes        colour: brick     pen: ${pens}[0]   dash: axis
layer: floors      colour: wood      pen: 0
layer: furniture   colour: charcoal  pen: 0.18         fill: paper
layer: fittings    colour: charcoal  pen: 0.18
layer: walls       colour: ink       pen: ${pens}[2]   fill: charcoal
layer: openings    colour: ink       pen: ${pens}[1]
layer: names       colour: ink
layer: dimensions  colour: sea       pen: ${pens}[0]   fill: paper

# --- Axes: lines through the walls, and a letter in a ring at the end of each.

layer: axes
line: ${x}[0],0 to: ${x}[0],10.5
line: ${x}[1],0 to: ${x}[1],10.5
line: ${x}[2],0 to: ${x}[2],10.5
line: ${x}[3],0 to: ${x}[3],10.5
line: ${x}[4],0 to: ${x}[4],10.5
line: ${x}[5],0 to: ${x}[5],10.5
line: ${x}[6],0 to: ${x}[6],10.5
line: 13,${y}[0] to: -2.5,${y}[0]
line: 13,${y}[1] to: -2.5,${y}[1]
line: 13,${y}[2] to: -2.5,${y}[2]
line: 13,${y}[3] to: -2.5,${y}[3]
line: 13,${y}[4] to: -2.5,${y}[4]

dash: solid  letters: 2.4
circle: ${x}[0],10.78 radius: 0.28   t "X0" at: ${x}[0],10.78
circle: ${x}[1],10.78 radius: 0.28   t "X1" at: ${x}[1],10.78
circle: ${x}[2],10.78 radius: 0.28   t "X2" at: ${x}[2],10.78
circle: ${x}[3],10.78 radius: 0.28   t "X3" at: ${x}[3],10.78
circle: ${x}[4],10.78 radius: 0.28   t "X4" at: ${x}[4],10.78
circle: ${x}[5],10.78 radius: 0.28   t "X5" at: ${x}[5],10.78
circle: ${x}[6],10.78 radius: 0.28   t "X6" at: ${x}[6],10.78
circle: -2.78,${y}[0] radius: 0.28   t "Y0" at: -2.78,${y}[0]
circle: -2.78,${y}[1] radius: 0.28   t "Y1" at: -2.78,${y}[1]
circle: -2.78,${y}[2] radius: 0.28   t "Y2" at: -2.78,${y}[2]
circle: -2.78,${y}[3] radius: 0.28   t "Y3" at: -2.78,${y}[3]
circle: -2.78,${y}[4] radius: 0.28   t "Y4" at: -2.78,${y}[4]

# --- Floors

layer: floors
fill: oak  pattern: boards
b 0,0 to: 8,4                        # living room
b 0,4 to: 3,8                        # kitchen
b 3,4 to: 10,5                       # corridor
b 7,5 to: 9,6.5                      # hall
b 9,5 to: 10,8                       # below the stairs
b 10,4 to: 13,8                      # bedroom
fill: water  pattern: tiles  colour: sea
b 3,6 to: 5,8                        # bathroom
fill: mist  colour: grey
b 5,5 to: 7,8                        # washroom
b 3,5 to: 5,6                        # toilet
fill: sand  colour: brick
b 7,6.5 to: 9,8                      # entrance
fill: silver
b 7,8 to: 9,9.1                      # porch

# Eight mats. One is drawn, the others are placed; a number after the name rotates it.
colour: moss  fill: straw  pattern: mats  pen: 0.25
group: mat, 8,0
  b 0,0 to: 2,1
done
p mat at: 10,0   p mat at: 8,3   p mat at: 10,3   p mat at: 9,1   p mat at: 9,2
p mat, 90 at: 9,1
p mat, 90 at: 12,1

fill: wood  pattern: boards  colour: brick  pen: 0
b 12,0 to: 13,2                      # alcove
fill: linen  pattern: plain
b 12,2 to: 13,4                      # cupboard
pen: 0.18  colour: grey
line: 12,2 to: 13,4
line: 12,4 to: 13,2
dash: solid  colour: wood  pen: 0.35
line: 7,6.5 to: 9,6.5                # the step up from the entrance

# --- Walls

layer: walls
${outer}
w 0,0 to: ${east},0 to: ${east},${north} to: 0,${north} close
${inner}
w 3,${north} to: 3,4 to: ${east},4 end
w 3,5 to: 7,5 to: 7,8 end
w 3,6 to: 5,6 end
w 5,5 to: 5,8 end
w 9,5 to: 9,8 end
w 10,4 to: 10,8 end
w 8,0 to: 8,4 end
壁: 12,0 to: 12,4 end                # words may have Japanese names
壁: 12,2 to: 13,2 end

# --- Openings: the last word says what kind of door it is, and on which side of the way from the
# first end to the second it opens.

layer: openings
${outer}
window: 0.8,0 by: 2,0
window: 4.8,0 by: 2.4,0
window: 9,0 by: 2,0
window: 0,1 by: 0,2
window: 0,5.4 by: 0,1.2
window: 0.8,8 by: 1.4,0
window: 3.5,8 by: 1,0
window: 5.6,8 by: 0.8,0
window: 9.25,8 by: 0.5,0
window: 11.3,8 by: 1.3,0
window: 13,5.2 by: 0,1.6
door: 7.5,8 to: 8.5,8 le             # le, ri, sl, op: short forms of left, right, sliding, open
${inner}  fill: oak                  # an opening without a door
door: 6.5,4 to: 7.4,4 ri
door: 3,4.15 to: 3,4.85 op
door: 4.75,5 to: 4,5 le
door: 6.6,5 to: 5.75,5 ri
door: 5,7.3 to: 5,6.3 sl
door: 10,4.12 to: 10,4.9 ri
door: 8,1 to: 8,3 sl
door: 8.3,4 to: 9.8,4 sl
door: 12,2.15 to: 12,3.85 sl
戸: 12,0.12 to: 12,1.9 op

layer: furniture
stairs: 9.06,5.3 to: 9.94,7.9 steps: 13

# --- Kitchen. Groups interrupt the unfinished worktop: hob and sink are drawn first, and then the
# worktop continues. They are on a layer of their own, since the worktop is drawn when it is
# complete, and so above what was drawn before it on its layer. The end of a group restores layer,
# unit and the like; the look belongs to the layer and is kept.

fill: linen
polyline: 0.08,7.2 to: 0.08,7.92
  group: hob, 0.25,7.3 layer: fittings ${mm} fill: mist round: 30
    b 0,0 by: 600,460
    circle: 150,140 radius: 80
    circle: 450,140 radius: 80
    circle: 300,330 radius: 60
  done
  group: sink, 1.1,7.32 layer: fittings ${mm} fill: water round: 60
    b 0,0 by: 760,420
    fill: paper circle: 380,330 radius: 25
  done
to: 2.94,7.92 by: 0,-0.72 close

group: refrigerator, 2.2,6.3 ${mm} fill: paper round: 30
  b 0,0 by: 630,680
  line: 60,0 by: 0,680
done
group: cupboard, 2.45,4.95 ${mm} fill: oak
  b 0,0 by: 400,1150
  line: 0,575 by: 400,0
done
group: island, 0.08,4.5 ${mm} fill: oak round: 20
  b 0,0 by: 1500,600
done
group: stool, 0.45,4.2 ${mm} fill: linen
  circle: 0,0 radius: 160
done
p stool at: 0.95,4.2   p stool at: 1.45,4.2

# --- Dining table and chairs

group: table, 1,1.65 ${mm} fill: oak round: 40
  b 0,0 by: 1700,850
done
group: chair, 1.2,1.3 ${mm} fill: linen round: 90
  b 0,0 by: 440,440
  round: 20 fill: oak
  b 0,-40 by: 440,70
done
p chair at: 1.95,1.3
p chair, 180 at: 1.7,2.95
p chair, 180 at: 2.45,2.95

# --- Living room

layer: floors
colour: sand fill: linen pattern: plain pen: 0.18 round: 0.05
b 3.9,1 to: 6.5,2.9                  # a rug
round: 0
layer: furniture
group: sofa, 4.0,2.95 ${mm} fill: mist round: 90
  b 0,0 by: 2000,850
  b 0,640 by: 2000,210
  b 0,0 by: 190,850
  b 1810,0 by: 190,850
  round: 50
  b 190,0 by: 810,640
  b 1000,0 by: 810,640
done
group: tea-table, 4.65,1.85 ${mm} fill: oak round: 250
  b 0,0 by: 900,500
done
group: armchair, 6.9,1.3 ${mm} fill: mist round: 120
  turn: 35                           # turns what follows about the origin, here of the group
  b 0,0 by: 760,760
  b 0,0 by: 760,180
  round: 60
  b 130,180 by: 500,560
done
group: stove, 7.45,0.55 ${mm}
  fill: silver pattern: tiles circle: 0,0 radius: 420
  fill: charcoal pattern: plain round: 40 b -210,-170 to: 210,170
  fill: grey circle: 0,0 radius: 75
done
group: plant, 0.45,0.45 ${mm} colour: moss fill: leaf
  circle: 0,0 radius: 240
  circle: -60,70 radius: 120
  circle: 80,-30 radius: 130
  colour: charcoal
done

# --- Bathroom, washroom, toilet

group: bathtub, 3.08,7.04 ${mm} fill: paper round: 60
  b 0,0 by: 1680,790
  fill: water round: 200
  b 90,80 by: 1500,630
  fill: paper circle: 260,395 radius: 30
done
group: shower, 3.35,6.55 ${mm} fill: paper
  circle: 0,0 radius: 70
  circle: 0,0 radius: 25
done
group: washing-machine, 6.22,7.22 ${mm} fill: paper round: 40
  b 0,0 by: 620,620
  fill: mist circle: 310,310 radius: 210
done
group: washstand, 6.38,5.95 ${mm} fill: paper round: 20
  b 0,0 by: 500,900
  fill: water round: 160
  b 90,180 by: 330,540
done
group: toilet, 3.1,5.5 ${mm} fill: paper round: 30
  b 0,-220 by: 190,440
  round: 170
  b 150,-185 by: 520,370
  fill: mist round: 130
  b 260,-130 by: 350,260
done
group: basin, 4.62,5.66 ${mm} fill: paper round: 60
  b 0,0 by: 290,240
  fill: water circle: 145,120 radius: 85
done

# --- Entrance

group: shoe-cupboard, 7.06,6.6 ${mm} fill: oak
  b 0,0 by: 360,1150
  line: 0,383 by: 360,0
  line: 0,766 by: 360,0
done

# --- Japanese room: a low table and four cushions

group: cushion, 9.05,1.7 ${mm} colour: brick fill: sand round: 60
  b 0,0 by: 540,540
  colour: charcoal
done
p cushion at: 10.35,1.7   p cushion at: 9.7,0.95   p cushion at: 9.7,2.42
group: low-table, 9.42,1.5 ${mm} fill: wood round: 30
  b 0,0 by: 1050,900
done

# --- Bedroom

group: bed, 11.2,4.1 ${mm} fill: paper round: 40
  b 0,0 by: 1400,2000
  fill: mist round: 60
  b 0,0 by: 1400,1380
  line: 0,1180 by: 1400,0
  fill: linen
  b 100,1480 by: 560,380
  b 740,1480 by: 560,380
  undo                               # both pillows are a little too long:
  undo                               # remove them
  b 100,1500 by: 560,340
  b 740,1500 by: 560,340
done
group: night-table, 10.75,5.7 ${mm} fill: oak round: 20
  b 0,0 by: 400,400
  fill: paper circle: 200,200 radius: 110
done
group: wardrobe, 10.08,6.2 ${mm} fill: oak
  b 0,0 by: 600,1560
  line: 300,0 by: 0,1560
  line: 180,200 by: 240,0   line: 180,500 by: 240,0   line: 180,800 by: 240,0
  line: 180,1100 by: 240,0  line: 180,1400 by: 240,0
done
group: desk, 11.35,7.32 ${mm} fill: oak round: 20
  b 0,0 by: 1350,550
done
p chair, 10 at: 12.2,6.85

# --- Garden

layer: garden
fill: grass pen: 0
b -0.5,-2.8 to: 14.2,-0.08
pen: 0.13 fill: oak pattern: boards colour: wood
b 0.4,-1.6 to: 7.6,-0.09             # deck
b 8.6,-0.75 to: 11.4,-0.09           # veranda
pattern: plain fill: mist colour: grey
circle: 3.9,-2 radius: 0.22   circle: 4.6,-2.3 radius: 0.26   circle: 5.5,-2.2 radius: 0.2
circle: 6.3,-2.45 radius: 0.27  circle: 7.3,-2.2 radius: 0.22  circle: 8.3,-2.1 radius: 0.26
circle: 9.2,-1.8 radius: 0.24  circle: 9.8,-1.2 radius: 0.26
colour: moss fill: leaf pen: 0.18
group: tree, 12.9,-1.6 ${mm}
  circle: 0,0 radius: 850
  arc: 0,0 radius: 600 angles: 20,100
  arc: 0,0 radius: 600 angles: 130,250
  arc: 0,0 radius: 600 angles: 275,350
  arc: 0,0 radius: 350 angles: 80,200
  arc: 0,0 radius: 350 angles: 230,30
  turn: 15   line: 130,0 to: 760,0
  turn: 75   line: 130,0 to: 700,0
  turn: 115  line: 130,0 to: 780,0
  turn: 190  line: 130,0 to: 720,0
  turn: 260  line: 130,0 to: 760,0
  turn: 310  line: 130,0 to: 690,0
  turn: 0
  fill: moss circle: 0,0 radius: 80
  fill: leaf
done
p tree, 70 at: 1.2,-2.3
group: shrub, 11,-2.2 ${mm}
  circle: 0,0 radius: 330
  circle: 330,170 radius: 260
  circle: 420,-210 radius: 230
done
p shrub, 120 at: 2.7,-2.35
p shrub, 40 at: 13.55,-0.5

# --- Names of rooms. Further texts are further lines.

layer: names
letters: 2.8
t "リビング", "Living room" at: 5.1,0.55
t "食堂", "Dining" at: 3.2,3.35
t "台所", "Kitchen" at: 1.35,6.35
t "和室 八帖", "Japanese room" at: 10,3.5
t "寝室", "Bedroom" at: 11.4,6.75
t "浴室", "Bath" at: 4.25,6.55
t "洗面", "Wash" at: 5.6,6.6
t "玄関", "Entrance" at: 8.25,7.4
t "廊下", "Corridor" at: 5.9,4.5
letters: 1.8
t "便所", "WC" at: 4.35,5.35
t "床の間" at: 12.5,1
t "押入" at: 12.5,3.35
t "上る" at: 9.5,5.16
t "ポーチ", "Porch" at: 7.9,8.4
t "濡縁" at: 10,-0.42
t "ウッドデッキ", "Deck" at: 5.2,-0.85

# --- Dimensions: a chain continues until the word that gives its distance from the points.

layer: dimensions
dim ${x}[0],8 to: ${x}[1],8 to: ${x}[2],8 to: ${x}[3],8 to: ${x}[4],8 to: ${x}[5],8 to: ${x}[6],8
off: 1.6
dim 0,8 to: 13,8 off: 2.2
dim 0,${y}[0] to: 0,${y}[1] to: 0,${y}[2] to: 0,${y}[3] to: 0,${y}[4] off: 1.2
dim 0,0 to: 0,8 off: 1.8
dim 0,0 to: 8,0 by: 4,0 by: 1,0 off: -3.3

# --- The sheet: border, title, north, scale

layer: sheet
b -3.6,-4 to: 18.4,11.6
pen: 0.25
line: 14.8,-4 by: 0,15.6
line: 14.8,8.2 to: 18.4,8.2
line: 14.8,2.2 to: 18.4,2.2
line: 14.8,-1.6 to: 18.4,-1.6
align: left
t "野辺の家" letters: 7 at: 15.15,10.6        # a setting may interrupt a command
letters: 3.2  t "House by the Field" at: 15.15,9.85
letters: 2.6  t "1階平面図", "Ground floor plan" at: 15.15,8.9
t "縮尺 1:50", "Scale 1:50 on A3" at: 15.15,7.5
t "1階床面積 86.12㎡", "Ground floor 86.12 sq m" at: 15.15,6.5
t "単位 mm、基準 910", "Lengths in mm, module 910" at: 15.15,5.5
letters: 2.2 colour: grey
t "壁 外 150、内 100", "Walls 150 and 100 thick" at: 15.15,4.4
t "drafted with clui" at: 15.15,3.6
colour: charcoal align: middle

group: north-arrow, 16.6,0.3 ${mm}
  pen: 0.25
  circle: 0,0 radius: 900
  arc: 0,0 radius: 1050 angles: 60,120
  fill: charcoal
  polyline: 0,850 to: 300,-560 to: 0,-330 close
  fill: none
  polyline: 0,850 to: -300,-560 to: 0,-330 close
  letters: 3.5
  t "N" at: 0,1350
done

group: scale-bar, 15.15,-3 ${mm}
  fill: charcoal  b 0,0 by: 500,90
  fill: paper     b 500,0 by: 500,90
  fill: charcoal  b 1000,0 by: 1000,90
  letters: 1.9
  t "0" at: 0,250   t "1" at: 1000,250   t "2 m" at: 2000,250
done

where
save: house.svg
