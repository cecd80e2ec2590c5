# The router of a small office: one line to the provider, three networks inside, guests apart.
#
#     clui router.scm office.cmd

clock date: 2024-05-31 time: 09:30:00

configure terminal

# --- The device itself. Capitals of words do not matter, those of names and texts do.
hostname: gate
domain: office.example
banner: "事務所のルーター - the router of the office. Changes: ask Ana."
clock zone: JST, 9
service ssh
no service ssh  service http        # several commands may share a line,
service
    ssh                             # and one command may span several
dns server: 192.0.2.53
dns server: 192.0.2.54
ntp server: 192.0.2.123
logging level: 4
logging host: 10.1.0.9
snmp location: "2階, the cupboard behind the 'blue' door"
snmp contact: "ana@office.example"
snmp community: "watch \$ee" read   # a "$" before a "{" would start a variable reference
snmp community: tools write
user name: ana privilege: 15 secret: "correct horse"
user name: ben privilege: 5 secret: "battery staple"
user name: eve privilege: 1 cancel  # unfinished, then discarded

# --- Access lists: rules are tried in the order of their numbers.
access list: outside
  remark: "what may come in from the provider"
  permit tcp from: any to: any established
  permit tcp from: any to: 10.1.0.20 port: 443
  permit tcp from: any to: 10.1.0.20 ports: 8000, 8010
  permit udp from: 192.0.2.0/24 to: any all
  permit icmp from: any to: any
  deny ip from: any to: any
  at: 15 deny tcp from: 198.51.100.0, 255.255.255.0 to: any all   # between 10 and 20
exit
access list: guests
  deny ip from: any to: 10.1.0.0/16
  deny tcp from: any to: any port: 25
  permit ip from: 10.2.0.0/24 to: any
access list: admin                  # a section may begin without leaving the one before
  perm tcp from: 10.1.0.0/24 to: any port: 22
  perm tcp fr: 10.1.0.7 to: any port: 23
  no at: 20
  renumber
exit

# --- Interfaces. Ethernet ports exist from the start, and are down; others are created.
interface ethernet: 0
  description: "to the provider 光回線"
  ip address: 203.0.113.2/30
  access in: outside
  mtu: 1492
  speed: 1000  duplex full
  no shutdown
int eth: 1
  desc: "staff"
  ip addr: 10.1.0.1, 255.255.255.0
  ip sec: 10.1.1.1/24
  access out: admin
  no shut
int eth: 2
  desc: "guests"
  ip addr: 10.2.0.1/24
  ip helper: 10.1.0.9
  acc in: guests
  no shut
interface vlan: 30
  description: "telephones"
  ip address: 10.3.0.1/25
interface vlan: 31
  description: "not yet in use"
  ip address: 10.3.0.129/25
  shutdown
interface loopback: 0
  ip address: 10.255.0.1/32
exit

# --- Pools of addresses.
dhcp pool: staff
  network: 10.1.0.0/24
  range: 10.1.0.100, 10.1.0.199
  gateway: 10.1.0.1
  server: 10.1.0.9
  server: 192.0.2.53
  domain: office.example
dhcp pool: guests
  network: 10.2.0.0/24  range: 10.2.0.50, 10.2.0.250  gateway: 10.2.0.1
  server: 192.0.2.53
  lease: 2
exit

# --- Routes.
ip route: 0.0.0.0/0 via: 203.0.113.1
ip route: 0.0.0.0/0 distance: 200 via: 10.3.0.200    # if all else fails, and it does
ip route: 10.8.0.0/16 via: 10.1.0.8
ip route: 10.0.0.0/8 discard

# Ben is changed: the question interrupts the command.
user name: ben privilege: 7
  yes
  secret: "battery staple"
end

# --- The result.
show version
show clock
sh int
sh eth: 0
sh ip int
sh ip ro
sh ip ro: 198.51.100.7  sh ip ro: 10.8.1.1  sh ip ro: 10.9.9.9  sh ip ro: 10.3.0.77
sh access lists
sh acc list: outside
test list: outside tcp from: 203.0.113.9 to: 10.1.0.20 port: 8005
test list: outside tcp from: 198.51.100.9 to: 10.1.0.20 port: 443
test list: guests icmp from: 10.2.0.77 to: 192.0.2.1
show dhcp
show users
show services
show dns
show ntp
show logging
show snmp
copy running startup
show running
