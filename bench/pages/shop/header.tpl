<!DOCTYPE html>
<html lang="{lang}">
<head>
<meta charset="utf-8">
<title>{htmlspecialchars title} - {htmlspecialchars shop}</title>
<meta name="viewport" content="width=device-width, initial-scale=1">
<link rel="stylesheet" href="{assets}/shop.css">
<script src="{assets}/shop.js" defer></script>
</head>
<body>
<header>
<a class="logo" href="/">{htmlspecialchars shop}</a>
<form action="/search" role="search"><input type="search" name="q" aria-label="Search"><button>Search</button></form>
<p class="account">Hello {htmlspecialchars user} · <a href="/cart">{cart} items, {sum} EUR</a></p>
<nav><ul>
{dynamic menu}<li><a href="{*::url}">{htmlspecialchars *::title}</a></li>
{/dynamic}</ul></nav>
</header>
