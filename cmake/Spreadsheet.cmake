# The libraries that write a spreadsheet and read it back: XlsxWriter::XlsxWriter and Minizip::Minizip.
function(vx_find_c_library target header library)
  find_path(${library}_INCLUDE_DIR ${header} REQUIRED)
  find_library(${library}_LIBRARY ${library} REQUIRED)
  add_library(${target} UNKNOWN IMPORTED GLOBAL)
  set_target_properties(${target} PROPERTIES IMPORTED_LOCATION ${${library}_LIBRARY}
                                             INTERFACE_INCLUDE_DIRECTORIES ${${library}_INCLUDE_DIR})
endfunction()
vx_find_c_library(XlsxWriter::XlsxWriter xlsxwriter.h xlsxwriter)
vx_find_c_library(Minizip::Minizip minizip/unzip.h minizip)
