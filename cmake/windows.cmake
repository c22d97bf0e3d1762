# What a program for Windows carries beside its code: the version, a manifest, an icon where it is
# given. Elsewhere it is left as it is.
enable_language(RC)

# Usage: kvo_windows_resource(TARGET DESCRIPTION [ICON])
function(kvo_windows_resource target KVO_DESCRIPTION)
    get_target_property(KVO_PROGRAM ${target} OUTPUT_NAME)
    if(NOT KVO_PROGRAM)
        set(KVO_PROGRAM ${target})
    endif()
    set(KVO_ICON_LINE)
    if(ARGC GREATER 2)
        set(KVO_ICON_LINE "1 ICON \"${ARGV2}\"")
    endif()
    set(KVO_MANIFEST ${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest)
    set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${resource} @ONLY)
    target_sources(${target} PRIVATE ${resource})
    if(MSVC) # its linker writes the manifest
        target_sources(${target} PRIVATE ${KVO_MANIFEST})
    else()
        set_source_files_properties(${resource} TARGET_DIRECTORY ${target} PROPERTIES COMPILE_DEFINITIONS KVO_WITH_MANIFEST
            OBJECT_DEPENDS "${KVO_MANIFEST};${ARGN}")
    endif()
endfunction()
