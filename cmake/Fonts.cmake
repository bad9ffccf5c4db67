# The fonts, named in this one place: the face that texts are set in, and one that has the symbols it lacks. Both come
# from freely licensed Debian packages and travel with the assets.
set(OSTREL_TEXT_FONT RobotoCondensed-Medium.ttf)
set(OSTREL_SYMBOL_FONT DejaVuSansCondensed.ttf)

function(ostrel_stage_font file package)
  string(MAKE_C_IDENTIFIER ${file} name)
  find_file(OSTREL_FONT_${name} ${file}
    PATHS /usr/share/fonts /usr/local/share/fonts
    PATH_SUFFIXES truetype/roboto/unhinted/RTTF truetype/roboto/unhinted truetype/dejavu
    NO_CMAKE_FIND_ROOT_PATH)
  set(found ${OSTREL_FONT_${name}})
  if(NOT found)
    message(FATAL_ERROR "The font ${file} is missing: install ${package}, or set OSTREL_FONT_${name} to its path.")
  endif()
  configure_file(${found} ${PROJECT_BINARY_DIR}/ostrel/fonts/${file} COPYONLY)
  install(FILES ${found} DESTINATION ${CMAKE_INSTALL_DATADIR}/ostrel/fonts)
  # The licences ask to travel along.
  set(licence /usr/share/doc/${package}/copyright)
  if(EXISTS ${licence})
    configure_file(${licence} ${PROJECT_BINARY_DIR}/ostrel/fonts/${file}.licence COPYONLY)
    install(FILES ${licence} DESTINATION ${CMAKE_INSTALL_DATADIR}/ostrel/fonts RENAME ${file}.licence)
  endif()
endfunction()

ostrel_stage_font(${OSTREL_TEXT_FONT} fonts-roboto-unhinted)
ostrel_stage_font(${OSTREL_SYMBOL_FONT} fonts-dejavu-extra)
