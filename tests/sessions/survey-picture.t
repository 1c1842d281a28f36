The program makes the picture in docs/ from two scans.

  $ "$TESTDIR/../browser/scans.sh" .
  $ kelvo-survey --svg roof.json suburb.json | diff "$TESTDIR/../../docs/survey.svg" -

A block too weak to decode has no services and no best place; a single scan has no best place.

  $ LC_ALL=C kelvo-survey roof.json suburb.json | grep '^8A'
  8A   195936   ###             19   5  29   -                     4   -   -   -
  $ kelvo-survey roof.json | grep -c '\*'
  0
  [1]

Answers and labels that contain markup and control characters add neither to the page.

  $ kelvo-survey --html hostile.json > page.html
  $ grep -o '<[a-z]*' page.html | sort -u | tr '\n' ' '
  < <a <bdi <body <br <code <defs <div <h <head <html <li <meta <p <path <pattern <rect <section <span <style <svg <table <tbody <td <text <th <thead <title <tr <ul  (no-eol)
  $ grep -c '[[:cntrl:]]' page.html
  0
  [1]
