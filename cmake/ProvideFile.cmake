# SPDX-License-Identifier: GPL-3.0-or-later
# cmake -DFROM=file -DTO=file -P ProvideFile.cmake: copies FROM to TO unless TO is there.
if(NOT EXISTS "${TO}")
  get_filename_component(folder "${TO}" DIRECTORY)
  file(MAKE_DIRECTORY "${folder}")
  file(COPY_FILE "${FROM}" "${TO}.new")
  file(RENAME "${TO}.new" "${TO}")
endif()
