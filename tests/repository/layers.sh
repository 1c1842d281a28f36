#!/bin/bash
# layers.sh SOURCE_DIR: no file includes a header of a layer above its own.
cd "$1" || exit 2
status=0
# refuse FILES PATTERN: none of the files includes a header that matches.
refuse() {
  found=$(grep -nE -d skip "#include \"($2)" $1 2>/dev/null) || return 0
  echo "$found"
  status=1
}
driver='si468x/*.cpp si468x/*.h'
refuse "si468x/spi/*.cpp si468x/spi/*.h" 'si468x/[^/]*"|scan/|frontend/|simulator/|platform/|firmware/|survey/|trace/'
refuse "$driver" 'scan/|frontend/|simulator/|platform/|firmware/|survey/|trace/'
refuse 'scan/*' 'frontend/|simulator/|platform/|firmware/|survey/|trace/'
refuse 'frontend/*' 'simulator/|platform/|survey/|trace/'
refuse 'messages/*' 'si468x/|scan/|frontend/|simulator/|platform/|firmware/|survey/|trace/'
refuse 'platform/*/*' 'si468x/[^/]*"|scan/|frontend/|simulator/|firmware/|survey/'
refuse 'trace/*' 'si468x/|scan/|frontend/|simulator/|platform/|survey/'
refuse 'simulator/*/* simulator/*/*/*' 'si468x/|scan/|frontend/|platform/|firmware/|survey/'
refuse 'survey/*.* survey/*/*' 'si468x/|scan/|frontend/|simulator/|platform/|firmware/|trace/'
refuse 'survey/text/*' 'survey/(file/|output/|[^/]*")|messages/'
refuse 'survey/file/*' 'survey/(output/|[^/]*")'
refuse 'simulator/json/*' 'simulator/(broadcast|chip|board|host)/'
refuse 'simulator/broadcast/*' 'simulator/(chip|board|host)/'
refuse 'simulator/chip/*' 'simulator/(board|host)/'
refuse 'simulator/board/*' 'simulator/host/'
exit $status
