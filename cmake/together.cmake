# Compiles several sources as one: most of what a source costs is the headers it shares with its
# neighbours. File-local names of a target must be distinct for it, which readers like as well. A
# source that lacks an #include may get it from a neighbour here; the release compiles each alone.
#
# The joined sources of what needs no Qt lie in one place for all builds of the tree, so that two
# builds which compile them alike can share the objects. Those of Qt are joined by CMake, which knows
# what moc adds to them.

# Puts sources of a target that is free of Qt into groups of eight, which take their place.
function(kvo_join_sources target)
    get_target_property(sources ${target} SOURCES)
    get_target_property(directory ${target} SOURCE_DIR)
    set(members)
    set(kept)
    foreach(source IN LISTS sources)
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${directory})
        get_source_file_property(definitions ${source} TARGET_DIRECTORY ${target}
            COMPILE_DEFINITIONS)
        if(source MATCHES "\\.cpp$" AND NOT definitions)
            list(APPEND members ${source})
        else()
            list(APPEND kept ${source})
        endif()
    endforeach()
    list(LENGTH members count)
    if(count LESS 2)
        return()
    endif()
    set(number 0)
    set(first 0)
    while(first LESS count)
        list(SUBLIST members ${first} 8 group)
        math(EXPR first "${first} + 8")
        list(TRANSFORM group REPLACE "(.+)" "#include \"\\1\"")
        list(JOIN group "\n" text)
        set(joined ${CMAKE_SOURCE_DIR}/build/together/${target}_${number}.cpp)
        file(CONFIGURE OUTPUT ${joined} CONTENT "${text}\n" @ONLY)
        list(APPEND kept ${joined})
        math(EXPR number "${number} + 1")
    endwhile()
    set_target_properties(${target} PROPERTIES SOURCES "${kept}")
endfunction()

# Joins the sources of all targets of this folder and of those below it; call it when they are made.
function(kvo_compile_together directory)
    get_property(targets DIRECTORY ${directory} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        get_target_property(joins ${target} UNITY_BUILD)
        get_target_property(moc ${target} AUTOMOC)
        if(NOT type MATCHES "^(EXECUTABLE|STATIC_LIBRARY)$" OR (joins STREQUAL "OFF"))
            continue()
        elseif(moc)
            set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
        else()
            kvo_join_sources(${target})
        endif()
    endforeach()
    get_property(folders DIRECTORY ${directory} PROPERTY SUBDIRECTORIES)
    foreach(folder IN LISTS folders)
        kvo_compile_together(${folder})
    endforeach()
endfunction()
