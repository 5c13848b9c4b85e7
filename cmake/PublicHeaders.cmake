# What a host may include. All other headers are private to the tree; `scripts/lint` holds that each of these compiles
# alone, with g++ and with clang, and includes no private one.
function(quor_public_headers target) # paths from the current folder
    list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/" OUTPUT_VARIABLE headers)
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${headers})
endfunction()

# public-headers.txt in the build folder: a path a line.
function(quor_list_public_headers) # target...
    list(TRANSFORM ARGN REPLACE "(.+)" "$<TARGET_PROPERTY:\\1,HEADER_SET>")
    list(JOIN ARGN ";" sets)
    file(GENERATE OUTPUT "${PROJECT_BINARY_DIR}/public-headers.txt" CONTENT "$<JOIN:${sets},\n>\n")
endfunction()
