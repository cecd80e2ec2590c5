# A file full of mistakes, to see what the program says about each:
#
#     clui router.scm mistakes.cmd
#
# A mistake affects a word, a value or a command; correct lines around it are carried out.

# --- Words
shwo version                         # no such word; "version" is then refused as well
show interface ethernet: 0           # `show interface` is a complete command; correct is:
show ethernet: 0
interface: 0                         # a ":" says that a value follows, so this is another word
ip address: 10.0.0.1/24              # a word of another mode
sho ver                              # no mistake: a short form
s ver                                # too short
SHOW Clock                           # no mistake either: capitals do not matter
yes                                  # nothing was asked
exit                                 # this is the outermost mode

# --- Half-typed commands: an end of line ends nothing
show ip
show version                         # neither word can follow `show ip`
cancel
configure
terminal

# --- Modes: what a word does here, and what it cannot do
hostname: gate                       # no mistake
mtu: 1400                            # only in an interface
interface ethernet: 0
  permit tcp from: any to: any all   # only in an access list
  permit ip from: any to: any        # here `ip` begins a command of this mode, and it waits:
  shutdown                           # so this is refused as well
  cancel
  hostname: other                    # `exit` comes first
exit
configure terminal                   # already in this mode

# --- Names and numbers
hostname: "front gate"
hostname: ""
hostname: gate, twice
interface ethernet: 4
interface vlan: zero
  cancel
interface vlan: 99999999999
  cancel
interface loopback: -1
interface vlan: 1.9                  # an integer: its fraction is cut off
  exit
logging level: 8
clock zone: JST                      # a second value is missing: this word is incomplete, and reads
dns lookup                           # the next text as that value
cancel
clock zone: JST, 99

# --- Addresses
interface ethernet: 0
  ip address: 10.0.0.1
  ip address: 10.0.0.256/24
  ip address: 10.0.0/24
  ip address: 010.0.0.1/24           # some programs would read 8 here
  ip address: ten.zero.zero.one/24
  ip address: ''
  ip address: 10.0.0.1/33
  ip address: 10.0.0.1, 255.0.255.0
  ip address: 10.0.0.1/24, 24
  ip address: 10.0.0.1, 24, 24
  ip address: 10.0.0.0/24
  ip address: 10.0.0.255/24
  ip address: 224.0.0.1/24
  ip address: 127.0.0.1/8
  ip secondary: 10.0.1.1/24          # not before the first one
  ip address: 10.0.0.1/24            # at last
  ip secondary: 10.0.0.129/25
  no ip secondary: 10.9.9.9/24
  speed: 11
  no shutdown
interface vlan: 7
  speed: 100
  mtu: 20
  ip address: 10.0.0.7/30
  access in: nothing
exit
no interface vlan: 8
show vlan: 8

# --- Routes
ip route: 10.5.0.1/16 via: 10.0.0.9
ip route: 10.5.0.0/16 via: 10.0.0.1
ip route: 10.5.0.0/16 distance: 0 via: 10.0.0.9
ip route: 10.5.0.0/16 distance: 5    # the word that ends the command is missing,
ip route: 10.6.0.0/16 via: 10.0.0.9  # so this is read for it, up to `via:`
no ip route: 10.6.0.0/16

# --- Access lists
access list: "a b"
access list: web
  permit tcp from: any to: 10.0.0.0/8            # all, port:, ports: or established is missing
  port: 80000
  permit tcp from: any to: any ports: 90, 80
  permit icmp from: any to: any port: 7          # ICMP has no ports
  permit ip from: 10.0.0.1/8 to: any
  permit ip from: any, 0 to: any
  permit from: any
  cancel
  at: 0 remark: "before the first"
  no at: 10
  remark: ""
exit
no access list: wbe
no access list: web                  # no mistake: nothing uses it

# --- Pools
dhcp pool: lan
  gateway: 10.0.0.1                  # the network comes first
  network: 10.0.0.0/24
  gateway: 10.1.0.1
  range: 10.0.0.200, 10.0.0.100
  range: 10.0.0.200
  cancel                             # is read as the second value
  range: 10.0.0.100, 10.0.0.200
  network: 10.7.0.0/24
  lease: 0
exit

# --- Text and users. Text is never read as a script, whatever is in it.
user name: ana privilege: 16 secret: "correct horse"
user name: ana privilege: 15 secret: "short"
user name: ana privilege: 15 secret: "correct horse"
user name: '") (quit) ("' privilege: 1 secret: abcdef
user name: eve privilege: 1 digest: 12345
no user name: bob
banner: '") (exit) (display "'       # no mistake
banner: "no end
snmp community: public               # read or write is missing
show snmp
cancel

# --- Questions: only an answer may come in between
access list: used
  permit ip from: any to: any
interface ethernet: 0
  access in: used
exit
no access list: used
hostname: waiting
maybe
no
user name: ana privilege: 1
secret: abcdef                       # the question comes first
yes
secret: abcdef
end
reload
show version
no
erase startup                        # nothing was saved
clock date: 2023-02-29 time: 10:00:00
clock date: 2024-2-9 time: 10:00:00
clock date: 2024-02-29 time: 24:00:00
copy running file: /no/such/folder/gate.cfg
copy startup running
test list: used tcp from: 10.0.0.1 to: any port: 80

# --- The file ends in the middle of a command.
show running
show ip
