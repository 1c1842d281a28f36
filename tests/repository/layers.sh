#!/bin/bash
# layers.sh SOURCE_DIR BUILD_DIR NM: no file includes a header of a layer above its own, and no layer of the simulated
# board needs a symbol that only a layer above defines.
cd "$1" || exit 2
status=0
# refuse FILES PATTERN: none of the files includes a header that matches.
refuse() {
  found=$(grep -nE -d skip "#include \"($2)" $1 2>/dev/null) || return 0
  echo "$found"
  status=1
}
driver='si468x/*.cpp si468x/*.h'
refuse "si468x/spi/*.cpp si468x/spi/*.h" 'si468x/[^/]*"|scan/|frontend/|simulator/|platform/|firmware/|survey/|live/|watch/|remote/|trace/'
refuse "$driver" 'scan/|frontend/|simulator/|platform/|firmware/|survey/|live/|watch/|remote/|trace/'
refuse 'scan/*' 'frontend/|simulator/|platform/|firmware/|survey/|live/|watch/|remote/|trace/'
refuse 'frontend/*' 'simulator/|platform/|survey/|live/|watch/|remote/|trace/'
refuse 'messages/*' 'lock/|si468x/|scan/|frontend/|simulator/|platform/|firmware/|survey/|live/|watch/|remote/|trace/'
refuse 'lock/*' 'si468x/|scan/|frontend/|simulator/|platform/|firmware/|survey/|live/|watch/|remote/|trace/'
refuse 'platform/*/*' 'si468x/[^/]*"|scan/|frontend/|simulator/|firmware/|survey/|live/|watch/|remote/'
refuse 'trace/*' 'si468x/|scan/|frontend/|simulator/|platform/|survey/|live/|watch/|remote/'
refuse 'simulator/*/* simulator/*/*/*' 'si468x/|scan/|frontend/|platform/|firmware/|survey/|live/|watch/|remote/'
refuse 'survey/*.* survey/*/*' 'si468x/|scan/|frontend/|simulator/|platform/|firmware/|trace/|live/|watch/|remote/'
refuse 'survey/text/*' 'survey/(file/|output/|[^/]*")|messages/'
refuse 'survey/file/*' 'survey/(output/|[^/]*")'
refuse 'live/*' 'scan/|frontend/|simulator/|platform/|firmware/|trace/|watch/|remote/|survey/(file/|output/|[^/]*")'
refuse 'watch/*' 'si468x/|scan/|frontend/|simulator/|platform/|firmware/|trace/|remote/|survey/(file/|output/|[^/]*")'
refuse 'remote/*' 'simulator/|platform/|firmware/|trace/|lock/|watch/|frontend/([^b]|b[^o])|survey/output/[^p]'
refuse 'simulator/json/*' 'simulator/(broadcast|chip|board|host|kernel)/'
refuse 'simulator/broadcast/*' 'simulator/(chip|board|host|kernel)/'
refuse 'simulator/chip/*' 'simulator/(board|host|kernel)/'
refuse 'simulator/board/*' 'simulator/(host|kernel)/'
refuse 'simulator/host/*' 'simulator/kernel/'

objects() { find "$build/simulator" -path "*/kelvo_simulator.dir/$1/*.o"; }
symbols() { "$nm" $1 $(objects "$2") 2>/dev/null | awk 'NF > 1 { print $NF }' | sort -u; }
build=$2 nm=$3
above=
for layer in host board chip broadcast json; do
  [ -n "$(symbols --defined-only $layer)" ] || { echo "no object files of simulator/$layer"; status=1; }
  for upper in $above; do
    found=$(comm -12 <(symbols --undefined-only $layer) <(symbols --defined-only $upper) |
      grep -vxF "$(symbols --defined-only $layer)")
    [ -z "$found" ] || { echo "simulator/$layer needs of simulator/$upper: $found"; status=1; }
  done
  above="$above $layer"
done
exit $status
