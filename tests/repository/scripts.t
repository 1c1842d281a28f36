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

