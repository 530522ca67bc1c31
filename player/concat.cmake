# Joins SOURCES (file names separated by commas) into OUT, each file as it
# stands.
string(REPLACE "," ";" SOURCES "${SOURCES}")
file(WRITE ${OUT}.tmp "")
foreach(f IN LISTS SOURCES)
  file(READ ${f} _text)
  file(APPEND ${OUT}.tmp "${_text}")
endforeach()
file(RENAME ${OUT}.tmp ${OUT})
