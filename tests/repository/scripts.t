Scripts and the build refuse what they cannot do, and name the cure.

  $ cd "$TESTDIR/../.."
  $ scripts/package armel
  usage: scripts/package [arm64|armhf] [CMAKE-ARGUMENT...]; without a name, for this machine's processor
  [1]
  $ configure() { cmake -S . -B "$CRAMTMP/build" -DBUILD_TESTING=OFF "$@" 2>&1 | sed -n '/KELVO_FIRMWARE_DIR/,/^$/p'; }
  $ configure -DKELVO_FIRMWARE_DIR=/no/such
      KELVO_FIRMWARE_DIR=/no/such is not a folder. This build folder remembers it: name
      another one, or give -UKELVO_FIRMWARE_DIR for firmware/images
  
  $ configure | head -n 1
      KELVO_FIRMWARE_DIR=/no/such is not a folder. This build folder remembers it: name
  $ configure -UKELVO_FIRMWARE_DIR

They wait for another apt that is reading its index.

  $ mkdir "$CRAMTMP/bin"
  $ stub() { { echo '#!/bin/sh'; cat; } > "$CRAMTMP/bin/$1"; chmod +x "$CRAMTMP/bin/$1"; }
  $ stub dpkg-query < /dev/null
  $ stub sleep < /dev/null
  $ stub sudo <<< 'exec "$@"'
  $ stub apt-get << 'END'
  > echo "$@" >> "$CRAMTMP/calls"
  > [ "$(wc -l < "$CRAMTMP/calls")" -gt 2 ] || { echo 'E: Could not get lock /var/lib/apt/lists/lock.' >&2; exit 100; }
  > END
  $ PATH=$CRAMTMP/bin:$PATH sh -c '. scripts/lib/common.sh; install radio' scripts/test 2> /dev/null
  $ sed 's/.*\(update\|install\).*/\1/' "$CRAMTMP/calls"
  update
  update
  update
  install
