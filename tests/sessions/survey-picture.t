The program makes the picture in docs/ from two scans.

  $ "$TESTDIR/../../scripts/survey-scans" .
  $ kelvo-survey --svg roof.json suburb.json | diff "$TESTDIR/../../docs/survey.svg" -

Answers and labels that contain markup and control characters add neither to the page.

  $ kelvo-survey --html hostile.json > page.html
  $ grep -o '<[a-z]*' page.html | sort -u | tr '\n' ' '
  < <a <bdi <body <br <caption <code <defs <div <h <head <html <li <meta <p <path <pattern <rect <section <span <style <svg <table <tbody <td <text <th <thead <title <tr <ul  (no-eol)
  $ grep -c '[[:cntrl:]]' page.html
  0
  [1]
