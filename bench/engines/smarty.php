<?php

// Smarty: compiled templates, never checked for changes, includes merged into one file.
return function (string $pages, string $cache): Closure {
    require_once '/usr/share/php/smarty4/Smarty.class.php';
    $smarty = new Smarty();
    $smarty->setTemplateDir($pages)->setCompileDir($cache);
    $smarty->setCompileCheck(Smarty::COMPILECHECK_OFF);
    $smarty->setCaching(Smarty::CACHING_OFF);
    $smarty->merge_compiled_includes = true;
    return function (string $page, array $data) use ($pages, $smarty): Closure {
        $name = $page === 'string' ? 'string:' . file_get_contents("$pages/$page/page.smarty") : "$page/page.smarty";
        return function () use ($smarty, $name, $data) {
            $smarty->clearAllAssign();
            $smarty->assign($data);
            return $smarty->fetch($name);
        };
    };
};
