# Read by every session. Each has a folder and a board of its own.
. "$TESTDIR/../../scripts/lib/board.sh"
clean_environment
export KELVO_SIM_STATE="$PWD/board.json"
export KELVO_SIM_BROADCAST="$PWD/air.json"
default=$TESTDIR/../../simulator/broadcast/files/default.json

# air [MEMBERS]: from now on the built-in broadcast, its clock stopped and its chip always ready, with further members.
air() {
  with_members "$fixed_time, \"chip\": {\"always_ready\": true}${1:+
, $1}
" <"$default" >"$KELVO_SIM_BROADCAST"
}

# faults FAULT,...: from now on these faults, whatever the broadcast.
faults() {
  export KELVO_SIM_FAULTS="$PWD/faults.json"
  echo "[$1]" >"$KELVO_SIM_FAULTS"
}

# run OPTION...: what the program prints after its start lines, and its exit status unless that is 0.
run() {
  kelvo-sim "$@" 2>&1 | sed '1,/NO WARRANTY/d' | sed '1d; /^SPI bus enabled/,+1d'
  said ${PIPESTATUS[0]}
}
said() { [ "$1" = 0 ] || echo "= $1"; }

# wire OPTION...: the same, and between its texts what happens on the board: commands with their bytes, reads with their
# lengths, waits in microseconds, the level of the reset line.
wire() { wire_and_pins "$@" | sed -E '/^pin (23 [^lh]|7 |8 |9 |10 |11 )/d'; }

# wire_and_pins OPTION...: the same with every event of a pin. Those differ between the simulated board's registers and a
# kernel: see direct.t and kernel.t.
wire_and_pins() {
  KELVO_SIM_TRACE=/dev/stdout kelvo-sim "$@" 2>&1 |
    sed '1,/^SPI bus enabled/d' | sed 1d |
    sed -E 's/^ +[0-9]+\.[0-9]+ (spi|wait|pin|fault|refused|mistake|total) /\1 /
            s/(.*[]}]) +[0-9]+\.[0-9]+ (spi|total) /\1\n\2 /' |
    sed -E '/^total/d; /^ +[0-9.]+ chip /d; s/^spi RD_REPLY ([0-9]+) .*/read \1/; s/^spi ([A-Z_]+) [0-9]+ > (.*) <.*/\1 \2/'
  said ${PIPESTATUS[0]}
}

air
