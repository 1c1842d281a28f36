The radio in a browser: pairing, orders, events, and what is refused.

  $ . "$TESTDIR/setup.sh"
  $ export KELVO_SIM_REALTIME=0 KELVO_SIM_TRACE=$PWD/trace STATE_DIRECTORY=$PWD/state; mkdir state
  $ start() {
  >   kelvo-remote-sim --listen 127.0.0.1:0 --interval 100 "$@" >said 2>>faults & server=$!; : >said
  >   for i in {1..500}; do base=$(grep -o 'http://[^;]*' said) && break; sleep 0.02; done
  >   key=$(cat state/kelvo-remote-sim.key)
  > }
  $ end() { kill $server; wait $server; said $?; }
  $ ask() { curl -s -m 20 -H "Cookie: kelvo-remote=$key" "$@"; }
  $ order() { ask -H 'Content-Type: application/json' -d "{\"order\": $1}" $base/do; }
  $ listen() {
  >   echo 1 >seen; : >events; ask -N -m 100 $base/events >events 2>&1 & listener=$!
  >   for i in {1..500}; do grep -qs state events && break; sleep 0.02; done
  > }
  $ sees() { # the next event with this text
  >   for i in {1..500}; do found=$(tail -n +$(cat seen) events | grep -n -m 1 -e "$1") && break; sleep 0.02; done
  >   echo $(($(cat seen) + ${found%%:*})) >seen; echo "${found#*:}"
  > }
  $ state() { sees "\"doing\":null.*$1"; }

A phone is paired by the link; the key is its owner's alone.

  $ start; listen
  $ stat -c %a state/kelvo-remote-sim.key
  600
  $ kelvo-remote-sim --pair --listen ${base#http://} | sed "s,$base,BASE,; s/$key/KEY/"
  BASE/pair?key=KEY
  This address is for browsers on this machine; phones need --listen, as in --listen 0.0.0.0:8468
  $ curl -s -i "$base/pair?key=$key" | grep -iE '^(HTTP|Location|Set-Cookie)' | tr -d '\r' | sed "s/$key/KEY/"
  HTTP/1.1 303 See Other
  Location: /
  Set-Cookie: kelvo-remote=KEY; Path=/; Max-Age=315360000; HttpOnly; SameSite=Strict
  $ ask -i $base/ | tr -d '\r' | sed -nE "s/.*script-src 'nonce-([0-9a-f]{32})'; .*/\1/p; s/.*<script nonce=\"(.*)\">/\1/p" | uniq | wc -l
  1
  $ cmp <(ask $base/ | sed 's/ nonce="[^"]*"//') "$TESTDIR/../../remote/page.html"

What is not a paired browser's request from this server's own page gets one line and changes nothing.

  $ grep -c ' spi ' trace >before
  $ refused() { curl -s -m 20 -o answer -w '%{http_code} %{content_type} ' "$@"; cat answer; }
  $ refused $base/
  403 text/plain; charset=utf-8 not paired; the link of kelvo-remote-sim --pair pairs this browser
  $ refused "$base/pair?key=${key/[0-7]/8}"
  403 text/plain; charset=utf-8 not paired; the link of kelvo-remote-sim --pair pairs this browser
  $ refused -H "Cookie: kelvo-remote=$key" -H 'Host: radio.example' $base/
  421 text/plain; charset=utf-8 this name is not known here; kelvo-remote-sim --host NAME adds one
  $ json='Content-Type: application/json'
  $ post() { refused -H "Cookie: kelvo-remote=$key" -d '{"order": "stop"}' "$@"; }
  $ post -H "$json" -H 'Origin: http://radio.example' $base/do
  403 text/plain; charset=utf-8 the request comes from another site's page
  $ post $base/do; post -H "$json" -X PUT $base/do; post -H "$json" $base/orders
  415 text/plain; charset=utf-8 only Content-Type: application/json
  405 text/plain; charset=utf-8 only POST
  404 text/plain; charset=utf-8 there is no such page
  $ post -H "$json" -H 'Transfer-Encoding: chunked' $base/do; post -H "$json" -d "$(printf %1025s)" $base/do
  411 text/plain; charset=utf-8 Content-Length alone, no Transfer-Encoding
  413 text/plain; charset=utf-8 the body is longer than 1024 bytes
  $ post -H "$json" -d '{}' $base/do
  400 text/plain; charset=utf-8 the body must be one JSON object
  $ post -H "$json" -H "X: $(printf %09000d)" $base/do | cut -c 1-3
  431

Find stations: each step is an event, the stations are listed by name, and kelvo-survey reads the scan.

  $ state 'stations":0'
  data: {"doing":null,"mode":"DAB","playing":null,"volume":63,"stations":0}
  $ ask $base/survey
  No scan is known yet: find stations first.
  $ order '"find"'; state 'stations":100'; grep -c 'event: progress' events; grep -m1 '"step":34' events
  {"accepted": true}
  data: {"doing":null,"mode":"DAB","playing":null,"volume":63,"stations":100}
  41
  data: {"step":34,"of":41,"index":33,"block":"12C","khz":227360,"services":17,"rssi":52,"snr":21}
  $ ask $base/stations >stations; grep -o '{"name":"Radio Quellberg"[^}]*}' stations
  {"name":"Radio Quellberg","service_id":17333,"component":12,"index":33,"block":"12C","khz":227360,"snr":21,"encrypted":false}
  $ python3 -c '
  > import json, re
  > all = json.load(open("stations"))
  > names = [station["name"] for station in all["stations"]]
  > print(len(names), names == sorted(names, key=str.casefold), bool(re.fullmatch(r"[-0-9]{10}T[0-9:]{8}Z", all["found"])))'
  100 True True
  $ kelvo-survey --json state/kelvo-remote-sim.scan.json | cut -c 1-30; ask $base/survey | grep -c 'Radio Quellberg'
  {"content":"FullStationScan","
  1

Play, volume and stop, as the bus sees them.

  $ sent() { sed -nE "s/.* spi ($1) [0-9]+ > (.*) <.*/\1 \2/p" trace | tail -n 1; }
  $ play() { order "\"play\", \"service_id\": $1, \"component\": $2, \"index\": $3"; }
  $ play 17333 12 33; state Quellberg; sent DAB_TUNE_FREQ; sent START_DIGITAL_SERVICE
  {"accepted": true}
  data: {"doing":null,"mode":"DAB","playing":{"name":"Radio Quellberg","service_id":17333,"component":12,"index":33,"block":"12C"},"volume":63,"stations":100}
  DAB_TUNE_FREQ b0 00 21 00 00 00
  START_DIGITAL_SERVICE 81 00 00 00 b5 43 00 00 0c 00 00 00
  $ order '"volume", "level": 20'; state '"volume":20'; sent SET_PROPERTY
  {"accepted": true}
  data: {"doing":null,"mode":"DAB","playing":{"name":"Radio Quellberg","service_id":17333,"component":12,"index":33,"block":"12C"},"volume":20,"stations":100}
  SET_PROPERTY 13 00 00 03 14 00
  $ order '"stop"'; state '"playing":null'; sent STOP_DIGITAL_SERVICE
  {"accepted": true}
  data: {"doing":null,"mode":"DAB","playing":null,"volume":20,"stations":100}
  STOP_DIGITAL_SERVICE 82 00 00 00 b5 43 00 00 0c 00 00 00
  $ play 1 1 33; sees '"order":"play"'; play 1 1 0; sees '"order":"play"'
  {"accepted": true}
  data: {"order":"play","message":"START_DIGITAL_SERVICE: the chip refused the command (code 32)","cure":"Find stations again."}
  {"accepted": true}
  data: {"order":"play","message":"no ensemble is received on this frequency","cure":"Find a better place for the antenna, or find stations again."}

Another program's tuning, its reset of the chip and its FM are noticed; what it plays is not known. A boot cures.

  $ play 17333 12 33; state Quellberg >all; kelvo-sim -f 7 >all; state unknown | cut -c 1-54
  {"accepted": true}
  data: {"doing":null,"mode":"DAB","playing":"unknown","
  $ kelvo-sim -k >all; state '"off"'; kelvo-sim -b F -x >all; state '"FM"'
  data: {"doing":null,"mode":"off","playing":null,"volume":null,"stations":100}
  data: {"doing":null,"mode":"FM","playing":null,"volume":63,"stations":100}
  $ order '"seek", "direction": "up"'; sees 'sample' >all; sees '"tune_freq":88200' | cut -d , -f 2-3; order '"stop"'; sees '"order":"stop"'
  {"accepted": true}
  "mode":"FM","tune_freq":88200
  {"accepted": true}
  data: {"order":"stop","message":"FM plays as long as the chip runs it","cure":"Set the volume to 0, or boot DAB."}
  $ order '"boot", "mode": "DAB"'; state '"DAB"'
  {"accepted": true}
  data: {"doing":null,"mode":"DAB","playing":null,"volume":20,"stations":100}
  $ end; cat faults; : >faults
  kelvo-remote-sim: play: START_DIGITAL_SERVICE: the chip refused the command (code 32)
  kelvo-remote-sim: play: no ensemble is received on this frequency
  kelvo-remote-sim: stop: FM plays as long as the chip runs it

A find that is given up leaves the old list, and the station plays again; killed at any moment of it, the next start finds
whole files, and plays the last station with its volume.

  $ export KELVO_SIM_REALTIME=1; start; listen; play 17333 12 33; state Quellberg | tail -c 28; cp state/kelvo-remote-sim.scan.json old
  {"accepted": true}
  "volume":20,"stations":100}
  $ order '"find"'; sees '"step":2,' >all; order '"cancel"'; state Quellberg | tail -c 28; cmp old state/kelvo-remote-sim.scan.json
  {"accepted": true}
  {"accepted": true}
  "volume":20,"stations":100}
  $ for i in {1..3}; do
  >   order '"find"' >all; sleep 0.$i; kill -9 $server; wait $server 2>all
  >   cmp old state/kelvo-remote-sim.scan.json; start; listen
  > done
  $ kelvo-sim -k >all; end; start; listen; state Quellberg | tail -c 43; ls state
  "block":"12C"},"volume":20,"stations":100}
  kelvo-remote-sim.key
  kelvo-remote-sim.last
  kelvo-remote-sim.scan.json

The air goes on while nothing is sent: a signal that rises from 10 to 30 dB within two seconds.

  $ end; rise() { echo "{\"at_s\": $1, \"rssi\": 50, \"snr\": $2, \"fic_quality\": 100}"; }
  $ echo "{\"ensembles\": [{\"index\": 33, \"signal\": {}, \"fading\": [$(rise 0 10), $(rise 2 30), $(rise 4 10)]}]}" >rise.json
  $ export KELVO_SIM_BROADCAST=$PWD/rise.json; kelvo-sim -k >all; kelvo-sim -b D -f 33 >all; start; listen; sleep 2
  $ [ $(grep -o '"snr":[0-9]*' events | sort -u | wc -l) -gt 5 ] || echo stands still
  $ end; air; start; listen

What cannot be written is said, and the radio goes on.

  $ mkdir state/kelvo-remote-sim.last.draft; order '"volume", "level": 33'; sees failure >all; sees data | sed "s,$PWD,HERE,"; state ':33'
  {"accepted": true}
  data: {"order":"volume","message":"HERE/state/kelvo-remote-sim.last: cannot be written: File exists","cure":"The radio goes on, but will not play this again after a power cut."}
  data: {"doing":null,"mode":"DAB","playing":"unknown","volume":33,"stations":100}
  $ end; rmdir state/kelvo-remote-sim.last.draft; echo other >state/kelvo-remote-sim.last; start; listen; order '"volume", "level": 34'
  {"accepted": true}
  $ sees failure >all; sees data | sed "s,$PWD,HERE,"; cat state/kelvo-remote-sim.last
  data: {"order":"volume","message":"HERE/state/kelvo-remote-sim.last: another program's file, left as it is","cure":"The radio goes on, but will not play this again after a power cut."}
  other

A new key ends every pairing and every listener's stream.

  $ kelvo-remote-sim --new-key | grep -c pair; wait $listener; ask $base/stations; key=$(cat state/kelvo-remote-sim.key)
  1
  not paired; the link of kelvo-remote-sim --pair pairs this browser
  $ ask $base/stations | cut -c 1-12
  {"stations":

Thirty-two clients that send half a request, and thirty-two that do not read, hold nobody up. Without a listener no byte
is on the bus.

  $ port=${base##*:}; request="Host: localhost\r\nCookie: kelvo-remote=$key\r\n"
  $ open() { for i in {1..32}; do exec {socket}<>/dev/tcp/127.0.0.1/$port; printf "$1" >&$socket; sockets+=($socket); done; }
  $ shut() { for socket in ${sockets[@]}; do exec {socket}>&-; done; sockets=(); }
  $ open "POST /do HTTP/1.1\r\n$request"; ask $base/stations | cut -c 1-12; shut
  {"stations":
  $ open "GET /events HTTP/1.1\r\n$request\r\n"; ask $base/stations | cut -c 1-12; ask $base/events; shut
  {"stations":
  32 browsers are connected already
  $ bytes() { grep -c ' spi ' trace; }
  $ for i in {1..100}; do one=$(bytes); sleep 0.3; [ $one = $(bytes) ] && break; done; sleep 1; [ $one = $(bytes) ] || echo traffic
  $ listen; sees 12C | cut -c 1-13; end; cut -d : -f 1-2 faults | uniq
  data: {"time"
  kelvo-remote-sim: volume

A chip that is reset while it starts a service does not play it.

  $ echo '[{"command": "START_DIGITAL_SERVICE", "bus": "reset_chip"}]' >reset.json; kelvo-sim -b D >all
  $ KELVO_SIM_FAULTS=reset.json start; listen; play 17333 12 33; sees '"order":"play"'; end
  {"accepted": true}
  data: {"order":"play","message":"the chip no longer runs its DAB application","cure":"Boot the chip again."}

Without an antenna no station is found, and the list stays.

  $ cp state/kelvo-remote-sim.scan.json old; echo '{"ensembles": []}' >silence.json; export KELVO_SIM_REALTIME=0
  $ KELVO_SIM_BROADCAST=silence.json start; listen; order '"find"'; sees '"order":"find"'; cmp old state/kelvo-remote-sim.scan.json; end
  {"accepted": true}
  data: {"order":"find","message":"no station is received; the list stays as it was","cure":"Check the antenna, and find stations again."}

What cannot be used ends the program at once.

  $ for words in --listen=8468 --listen=localhost:1 --listen=::1:1 --listen=[127.0.0.1]:1 --listen=127.0.0.1:65536 -i99 -ix; do
  >   kelvo-remote-sim $words > all 2>&1; said $?; head -n 1 all
  > done
  = 2
  kelvo-remote-sim: 8468: not an address and a port, as in 0.0.0.0:8468 or [::1]:8468
  = 2
  kelvo-remote-sim: localhost:1: not an address and a port, as in 0.0.0.0:8468 or [::1]:8468
  = 2
  kelvo-remote-sim: ::1:1: not an address and a port, as in 0.0.0.0:8468 or [::1]:8468
  = 2
  kelvo-remote-sim: [127.0.0.1]:1: not an address and a port, as in 0.0.0.0:8468 or [::1]:8468
  = 2
  kelvo-remote-sim: 127.0.0.1:65536: not an address and a port, as in 0.0.0.0:8468 or [::1]:8468
  = 2
  kelvo-remote-sim: 99: not a number from 100 to 60000
  = 2
  kelvo-remote-sim: x: not a number from 100 to 60000
  $ echo '{}' >wrong.json; kelvo-remote-sim wrong.json; start; kelvo-remote-sim --listen ${base#http://} 2>&1 | sed s/:[0-9]*:/:PORT:/
  kelvo-remote-sim: wrong.json: line 1: expected the member "content" in this object
  kelvo-remote-sim: 127.0.0.1:PORT: cannot listen: Address already in use
  $ end
  $ echo 'no key' >state/kelvo-remote-sim.key; kelvo-remote-sim --new-key 2>&1 | sed "s,$PWD,HERE,"
  kelvo-remote-sim: HERE/state/kelvo-remote-sim.key: another program's file, left as it is
