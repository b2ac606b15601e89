# Lets the patterns for unexpected lines read lines as the tests write them.
include(${CMAKE_CURRENT_LIST_DIR}/../unexpectedlines.cmake)

# expect(<TRUE or FALSE> <output>): whether a test with this output fails by its lines.
function(expect is_unexpected output)
  set(found FALSE)
  foreach(pattern IN LISTS vx_unexpected_lines)
    if(output MATCHES "${pattern}")
      set(found TRUE)
    endif()
  endforeach()
  if(NOT found STREQUAL is_unexpected)
    message(SEND_ERROR "expected ${is_unexpected} for: ${output}")
  endif()
endfunction()

set(begin "********* Start testing of TstA *********\nPASS   : TstA::initTestCase()\n")
set(end "\nPASS   : TstA::f()\nTotals: 3 passed, 0 failed, 0 skipped, 0 blacklisted, 2ms\n")

foreach(text "QTimer: not on this thread" "a text of ours" "T" "Th" "Thi" "This" "This " "This p" ""
        "Three rows" "That is not so" "This program did it")
  expect(TRUE "${begin}QWARN  : TstA::f() ${text}${end}")
  expect(TRUE "${begin}QWARN  : TstA::f(row) ${text}${end}")
  expect(TRUE "${begin}QWARN  : TstA::f(row (with brackets)) ${text}${end}")
  expect(TRUE "${begin}QWARN  : TstA::f(row (with brackets), and more) ${text}${end}")
  expect(TRUE "${begin}QSYSTEM: TstA::f() ${text}${end}")
endforeach()
foreach(line "QObject::connect: no such signal" "QFont::setPixelSize: 0" "QPixmap::scaled: a null pixmap"
        "QSslSocket: cannot resolve" "QWidget::A::b: c" "qt.qpa.xcb: no screen" "qt.svg: broken")
  expect(TRUE "${begin}${line}${end}")
  expect(TRUE "${line}${end}")
endforeach()

expect(FALSE "${begin}${end}")
foreach(row "" "row" "row (with brackets)")
  foreach(text "propagateSizeHints()" "raise()" "setting window opacity" "openDocument() for 'a'")
    expect(FALSE "${begin}QWARN  : TstA::f(${row}) This plugin does not support ${text}${end}")
  endforeach()
  expect(FALSE "${begin}QDEBUG : TstA::f(${row}) Connect Received${end}")
  expect(FALSE "${begin}QINFO  : TstA::f(${row}) QVariant: a text${end}")
endforeach()
