The command line.

  $ . "$TESTDIR/setup.sh"
  $ run -b D -f 33
  Boot up successful
  
  Tuned.
  

Playing needs both ids; without them the run continues. A number ends at the first other character.

  $ for ids in "" "-e 17333" "-c 12" "-e 0 -c 12" "-e x -c 12"; do run -p $ids -l 0; done
  To play, a service id and component id have to be given
  
  Setting volume to 0
  
  To play, a service id and component id have to be given
  
  Setting volume to 0
  
  To play, a service id and component id have to be given
  
  Setting volume to 0
  
  To play, a service id and component id have to be given
  
  Setting volume to 0
  
  To play, a service id and component id have to be given
  
  Setting volume to 0
  
  $ run -p -e 17333 -c 99 -l 7
  Could not start service
  
  Setting volume to 7
  
  $ wire -p -e 3771802437 -c 1 | grep START
  START_DIGITAL_SERVICE 81 00 00 00 45 23 d1 e0 01 00 00 00
  refused START_DIGITAL_SERVICE: no service 3771802437 with component 1 in the ensemble
  $ run -p -e ' +017333x' -c 12 -l -1
  Illegal value for volume. Volume must be an integer between 0 and 63
  
  $ run -l 63; run -l 64
  Setting volume to 63
  
  Illegal value for volume. Volume must be an integer between 0 and 63
  

Only the first letter of the firmware is used, and only D and F boot.

  $ run -b DAB
  Boot up successful
  
  $ run -b X -i | grep CMD
  Firmware image running the sysstate CMD:    DAB
  $ run --boot=FM --chip_info | grep CMD
  Firmware image running the sysstate CMD:    FMHD
  $ run -k
  Si468x shut down
  
  $ for letter in d X ''; do run -k -b "$letter"; done
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  

Only the low eight bits of a frequency index and of the output choice are used; index 0 tunes nothing. A tune that finds
no ensemble ends the run: no volume, no report, and the chip is not shut down.

  $ run -b D -f 0 -f 256
  Boot up successful
  
  $ run -f 289
  Tuned.
  
  $ run -f 4294967329
  Tuned.
  
  $ run -f 2 -l 3 -i -k
  Could not tune to frequency
  
  $ run -i | grep CMD
  Firmware image running the sysstate CMD:    DAB
  $ for enable in 256 0 3; do wire -o $enable | grep 'SET_PROPERTY 13 00 00 08'; done
  SET_PROPERTY 13 00 00 08 01 00
  SET_PROPERTY 13 00 00 08 01 00
  SET_PROPERTY 13 00 00 08 02 00

Help, version and usage errors are printed before the board is accessed, and after the start lines.

  $ export KELVO_SIM_BROADCAST=/no/such/file
  $ kelvo-sim --help
  Starting...kelvo DAB radio client
  kelvo 1.0.0
  Usage: kelvo-sim [OPTION...]
              Commands and options can be combined. The command: 'sudo ./kelvo -b
              D -c 12 -e 17333 -f 33 -g -p -l 50' for example will boot up with
              DAB firmware, tune to the frequency with index 33 and the service
              with id 17333 and component id 12, start playing, print the service
              list and adjust the volume to a level of 50.
  kelvo - simple DAB radio interface to the Si468x for the terminal
  
    -b, --boot=FIRMWARE        Load the firmware and boot the Si468x. Use
                               argument 'D' to load the DAB firmware, 'F' to load
                               the FMHD firmware.
    -c, --component=SERVICE    Component id
    -d, --digrad_status        Prints the digital radio status
    -e, --service=SERVICE      Service id
    -f, --frequency=FREQUENCY  Frequency index of the ensemble
    -g, --digital_service_list Prints the digital service list of the ensemble,
                               including service data, always as json
    -i, --chip_info            Prints Si468x information
    -j, --format_json          Output info as json, if implemented
    -k, --shutdown             Shut down the Si468x
    -l, --level=LEVEL          Set the volume level of the radio to a value
                               between 0 (low) and 63 (high)
    -n, --event_status         Prints the digital radio event status
    -o, --i2s_out=ENABLE       Enable (i2s_out=1) i2s as output - analog out will
                               be deactivated. To disable, use i2s_out=0. The
                               board must support his and custom kernel needed.
                               The Si468x must not be tuned to change this.
    -p, --play                 Play a station. Service and component have to be
                               given and the Si468x has to be tuned to the right
                               frequency already.
    -r, --rds_status           Print RDS status information
    -t, --datetime             Prints ensemble date-time as ISO string
    -u, --full_scan            Scan all (European) DAB frequencies for ensembles
                               and save to the file "full_scan.json" in json
                               format.
    -x, --next                 Tune to the next FMHD station
    -?, --help                 Give this help list
        --usage                Give a short usage message
    -V, --version              Print program version
  
  Mandatory or optional arguments to long options are also mandatory or optional
  for any corresponding short options.
  
  Report bugs to <kelvo@example.org>.
  $ kelvo-sim --version
  Starting...kelvo DAB radio client
  kelvo 1.0.0
  kelvo 1.0.0
  $ for wrong in -q --no-such -f 33; do
  >   kelvo-sim $wrong 2>&1 | sed 's|/.*/||'; said ${PIPESTATUS[0]}
  > done
  Starting...kelvo DAB radio client
  kelvo 1.0.0
  kelvo-sim: invalid option -- 'q'
  Try `kelvo-sim --help' or `kelvo-sim --usage' for more information.
  = 64
  Starting...kelvo DAB radio client
  kelvo 1.0.0
  kelvo-sim: unrecognized option '--no-such'
  Try `kelvo-sim --help' or `kelvo-sim --usage' for more information.
  = 64
  Starting...kelvo DAB radio client
  kelvo 1.0.0
  kelvo-sim: option requires an argument -- 'f'
  Try `kelvo-sim --help' or `kelvo-sim --usage' for more information.
  = 64
  Starting...kelvo DAB radio client
  kelvo 1.0.0
  kelvo-sim: Too many arguments
  Try `kelvo-sim --help' or `kelvo-sim --usage' for more information.
  = 64
